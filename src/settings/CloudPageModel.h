// The cloud page's actions: the switch, backup, restore, the confirmation of a changed account,
// and the account on the user's own server (address, user name, password, test, trusting a
// certificate). The page's state is persisted settings that the QML reads directly; this model
// holds what is transient (the loading overlay, progress, the connection test's answer).
//
// Turning the switch on - by the user or by the confirmation of a changed account - runs the
// check of the account and zones and, 1.28 s later, a backup when all is well. That reaction
// belongs to the process, not to a page: one `CloudSwitchReaction` watches the setting and every
// page model shows its state.
#pragma once

#include "records/Defaults.h"
#include "records/Observation.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <cstddef>

namespace tidemark {

/// Runs a backup or a restore as the page's buttons do, without a window: the check first, then
/// the transfer when the account is healthy; waits for the cloud's answers. Prints the count and
/// the code, if any, and answers the exit status (non-zero on a code or an error).
int runHeadlessCloudTransfer(bool backup);

/// What the process is doing with the cloud, for every page: the switch's reaction (it watches
/// the setting), the loading overlay and the progress of a transfer.
class CloudActivity : public QObject {
    Q_OBJECT
public:
    static CloudActivity& instance();

    bool loading() const { return loading_; }
    QString progressText() const { return progressText_; }
    /// Starts a backup on a worker thread; `manual` also sets the manual backup time.
    void startUpload(bool manual);
    void startDownload();

signals:
    void loadingChanged();
    void progressTextChanged();
    void identityChangeNoticed();

private:
    CloudActivity();
    void switchChanged();
    void setLoading(bool on);
    void showProgress(std::size_t done, std::size_t total, bool finished);

    bool loading_ = false;
    bool switchWasOn_ = false;
    QString progressText_;
    ObservationToken switchObservation_;
};

class CloudPageModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool loadingViewShowUp READ loadingViewShowUp NOTIFY loadingViewShowUpChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressTextChanged)
    Q_PROPERTY(
        QString serverAddress READ serverAddress WRITE setServerAddress NOTIFY accountChanged)
    Q_PROPERTY(QString userName READ userName WRITE setUserName NOTIFY accountChanged)
    Q_PROPERTY(bool testing READ testing NOTIFY connectionChanged)
    Q_PROPERTY(QString connectionMessage READ connectionMessage NOTIFY connectionChanged)
    Q_PROPERTY(QString untrustedFingerprint READ untrustedFingerprint NOTIFY connectionChanged)
public:
    explicit CloudPageModel(QObject* parent = nullptr);

    bool loadingViewShowUp() const;
    QString progressText() const;
    QString serverAddress() const;
    void setServerAddress(const QString& address);
    QString userName() const;
    void setUserName(const QString& name);
    bool testing() const { return testing_; }
    QString connectionMessage() const { return connectionMessage_; }
    QString untrustedFingerprint() const { return untrustedFingerprint_; }

    /// The switch: writes the setting; turning it on starts the reaction described above.
    Q_INVOKABLE void setSwitch(bool on);
    /// The backup button: the check, then (on the state as it stands) the backup on a worker
    /// thread with the manual backup time.
    Q_INVOKABLE void backup();
    /// The restore button: memos, then events, when the account is healthy.
    Q_INVOKABLE void download();
    /// Adopts the account now signed in and turns the switch on 2.8 s later.
    Q_INVOKABLE void confirmIdentityChange();
    Q_INVOKABLE void setPassword(const QString& password);
    Q_INVOKABLE void testConnection();
    /// Accepts the certificate the last test refused.
    Q_INVOKABLE void trustCertificate();

signals:
    void loadingViewShowUpChanged();
    void progressTextChanged();
    void accountChanged();
    void connectionChanged();
    /// The switch's check found another account than the adopted one.
    void identityChangeNoticed();

private:
    bool testing_ = false;
    QString connectionMessage_;
    QString untrustedFingerprint_;
};

} // namespace tidemark
