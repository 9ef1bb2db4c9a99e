#include "shell/Translations.h"

#include "base/Localize.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace tidemark {

void installTranslations(QCoreApplication& app, const std::string& localeId) {
    const QLocale locale =
        localeId.empty() ? QLocale::system() : QLocale(QString::fromStdString(localeId));
    const bool chinese = locale.language() == QLocale::Chinese;
    auto* translator = new QTranslator(&app);
    const QString file = chinese ? QStringLiteral(":/i18n/Localizable_zh_CN.qm")
                                 : QStringLiteral(":/i18n/Localizable_en.qm");
    if (translator->load(file)) {
        QCoreApplication::installTranslator(translator);
    }
    setTranslator(
        [](std::string_view key) { return qtTrId(std::string(key).c_str()).toStdString(); });
}

} // namespace tidemark
