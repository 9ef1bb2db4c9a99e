// What the settings tab does beyond binding settings: the feedback mail, sharing the app's
// address, the links out, and the facts of the footer and the about page.
#pragma once

#include "settings/EmailHelper.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class SettingViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString buildDate READ buildDate CONSTANT)
    /// The user's region shows the site registration line in the footer.
    Q_PROPERTY(bool showsRegistrationLine READ showsRegistrationLine CONSTANT)
    Q_PROPERTY(QString shareLinkForThisApp READ shareLinkForThisApp CONSTANT)
    Q_PROPERTY(QString tipPage READ tipPage CONSTANT)
    Q_PROPERTY(QString sourcePage READ sourcePage CONSTANT)
public:
    explicit SettingViewModel(QObject* parent = nullptr);

    QString version() const;
    /// The day this build was made, in the user's locale.
    QString buildDate() const;
    bool showsRegistrationLine() const;
    QString shareLinkForThisApp() const;
    QString tipPage() const;
    QString sourcePage() const;

    /// The feedback row: a mail with the feedback subject, or the region's contact page.
    Q_INVOKABLE bool sendFeedback();
    /// Puts the app's address on the clipboard; answers the note to show.
    Q_INVOKABLE QString shareApp();
    /// Opens the app's entry in the desktop's software centre (appstream: link), else its site.
    Q_INVOKABLE bool openReviewPage();
    /// Opens a web address in the desktop's browser.
    Q_INVOKABLE bool openLink(const QString& url);

    EmailHelper& emailHelper() { return email_; }

private:
    EmailHelper email_;
};

} // namespace tidemark
