// The cloud account of this device: the WebDAV server's address and the user name in settings, and
// the password in the Secret Service (through QtKeychain). Where no Secret Service answers, the
// password lives in this process's memory only, until the program ends; it is never written in
// clear anywhere.
#pragma once

#include "records/Defaults.h"

#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

class QObject;

namespace tidemark {

class CloudAccount {
public:
    explicit CloudAccount(DefaultsSuite& settings = DefaultsSuite::standard());

    /// The http or https address of the folder that holds the cloud container; empty when none
    /// is set.
    QUrl serverAddress() const;
    /// Stores `address` without any user name or password written into it; false, and nothing
    /// stored, when it isn't an http or https URL with a host.
    bool setServerAddress(const QUrl& address);
    QString userName() const;
    void setUserName(const QString& name);
    /// Address and user name are both set.
    bool configured() const;

    /// The SHA-256 fingerprint of the one server certificate accepted although the system doesn't
    /// trust it ("AB:CD:..."), "" for none.
    QString pinnedCertificate() const;
    /// Accepts the certificate with this fingerprint from now on (replacing any other); "" accepts
    /// none.
    void pinCertificate(const QString& sha256Fingerprint);

    /// Keeps the password of the current address and user for this process, and in the Secret
    /// Service when one answers. `done` tells whether the Secret Service took it; it runs on
    /// `context`'s thread (not at all when `context` is gone by then).
    void setPassword(const QString& password, QObject* context,
                     std::function<void(bool keptInSecretService)> done = {});
    /// Keeps the password of the current address and user for this process only, as where no
    /// Secret Service answers; the Secret Service is left as it is.
    void keepPasswordInMemory(const QString& password);
    /// The password of the current address and user: this process's copy, else the Secret
    /// Service's; nothing when neither has one. `done` runs later on `context`'s thread.
    void readPassword(QObject* context, std::function<void(std::optional<QString>)> done) const;
    /// Forgets the password of the current address and user, here and in the Secret Service.
    void forgetPassword(QObject* context, std::function<void()> done = {});

private:
    /// The Secret Service entry's key and the key of this process's copy.
    QString passwordKey() const;

    Setting<std::string> serverAddress_;
    Setting<std::string> userName_;
    Setting<std::string> pinnedCertificate_;
};

} // namespace tidemark
