#include "settings/EmailHelper.h"

#include "calendar/Calendar.h"
#include "settings/AppLinks.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrlQuery>
#include <unicode/locid.h>

namespace tidemark {

namespace {

// A mailto: handler registered with the desktop (xdg-mime answers the .desktop file's name).
bool desktopHasMailClient() {
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (xdgMime.isEmpty()) {
        return false;
    }
    QProcess query;
    query.start(xdgMime, {QStringLiteral("query"), QStringLiteral("default"),
                          QStringLiteral("x-scheme-handler/mailto")});
    if (!query.waitForFinished(2000) || query.exitCode() != 0) {
        query.kill();
        return false;
    }
    return !query.readAllStandardOutput().trimmed().isEmpty();
}

QString localeRegion() {
    const icu::Locale locale(Calendar::current().localeId().c_str());
    return QString::fromLatin1(locale.getCountry());
}

} // namespace

bool usesChineseRegionContactPage(const QString& region) {
    static const QStringList regions = {QStringLiteral("CN"), QStringLiteral("TW"),
                                        QStringLiteral("HK"), QStringLiteral("MO")};
    return regions.contains(region);
}

EmailHelper::EmailHelper()
    : canSendMail(desktopHasMailClient),
      openUrl([](const QUrl& url) { return QDesktopServices::openUrl(url); }),
      region(localeRegion) {}

QUrl EmailHelper::feedbackTarget(const QString& subject, const QString& body,
                                 const QString& address) const {
    if (canSendMail()) {
        QUrl mail;
        mail.setScheme(QStringLiteral("mailto"));
        mail.setPath(address);
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("subject"), subject);
        if (!body.isEmpty()) {
            query.addQueryItem(QStringLiteral("body"), body);
        }
        mail.setQuery(query);
        return mail;
    }
    return QUrl(QString::fromLatin1(
        usesChineseRegionContactPage(region()) ? kContactPageChineseRegions : kContactPageGeneral));
}

bool EmailHelper::sendFeedbackMail(const QString& subject, const QString& body,
                                   const QString& address) {
    return openUrl(feedbackTarget(subject, body, address));
}

} // namespace tidemark
