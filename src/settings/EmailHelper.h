// The feedback mail: a mail composer where the desktop has a mail client, else the project's
// contact page for the user's region.
#pragma once

#include <QString>
#include <QUrl>
#include <functional>

namespace tidemark {

/// Whether the region's contact page is the one for "CN", "TW", "HK" and "MO".
bool usesChineseRegionContactPage(const QString& region);

class EmailHelper {
public:
    /// Whether a mail client handles mailto: links (asks xdg-mime by default).
    std::function<bool()> canSendMail;
    /// Opens a URL (QDesktopServices by default); answers whether something took it.
    std::function<bool(const QUrl&)> openUrl;
    /// The user's region ("DE", "CN", ...), "" for none (the calendar layer's locale by default).
    std::function<QString()> region;

    EmailHelper();

    /// The mailto: link with one recipient, the subject and the body (HTML); or, where no mail
    /// client is registered, the contact page for the region.
    QUrl feedbackTarget(const QString& subject, const QString& body, const QString& address) const;
    /// Opens feedbackTarget(); answers whether it was opened.
    bool sendFeedbackMail(const QString& subject, const QString& body, const QString& address);
};

} // namespace tidemark
