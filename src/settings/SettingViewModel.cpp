#include "settings/SettingViewModel.h"

#include "calendar/Calendar.h"
#include "settings/AppLinks.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

namespace tidemark {

SettingViewModel::SettingViewModel(QObject* parent) : QObject(parent) {}

QString SettingViewModel::version() const {
    return QStringLiteral(TIDEMARK_VERSION);
}

QString SettingViewModel::buildDate() const {
    // TIDEMARK_BUILD_DATE is "yyyy-MM-dd", fixed when the build was configured.
    const QString text = QStringLiteral(TIDEMARK_BUILD_DATE);
    DateComponents day;
    day.year = text.left(4).toInt();
    day.month = text.mid(5, 2).toInt();
    day.day = text.mid(8, 2).toInt();
    day.hour = 12;
    const auto& calendar = Calendar::current();
    const auto date = calendar.date(day);
    return date ? QString::fromStdString(calendar.formatSkeleton(*date, "yMMMd")) : text;
}

bool SettingViewModel::showsRegistrationLine() const {
    return usesChineseRegionContactPage(email_.region());
}

QString SettingViewModel::shareLinkForThisApp() const {
    return QString::fromLatin1(kProjectHomepage);
}

QString SettingViewModel::tipPage() const {
    return QString::fromLatin1(kTipPage);
}

QString SettingViewModel::sourcePage() const {
    return QString::fromLatin1(kSourcePage);
}

bool SettingViewModel::sendFeedback() {
    return email_.sendFeedbackMail(qtTrId("Feedback&Bugs _ Tide Mark"), QString(),
                                   QString::fromLatin1(kFeedbackAddress));
}

QString SettingViewModel::shareApp() {
    if (auto* clipboard = QGuiApplication::clipboard()) {
        clipboard->setText(shareLinkForThisApp());
        return qtTrId("shareLinkCopiedStringAtSettingPage");
    }
    return qtTrId("shareLinkNotCopiedStringAtSettingPage");
}

bool SettingViewModel::openReviewPage() {
    return email_.openUrl(QUrl(QStringLiteral("appstream://org.tidemark.TideMark"))) ||
           email_.openUrl(QUrl(shareLinkForThisApp()));
}

bool SettingViewModel::openLink(const QString& url) {
    return email_.openUrl(QUrl(url));
}

} // namespace tidemark
