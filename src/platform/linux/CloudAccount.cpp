#include "platform/linux/CloudAccount.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QObject>
#include <QThread>
#include <map>
#include <memory>
#include <mutex>
#include <qt6keychain/keychain.h>

namespace tidemark {

Q_LOGGING_CATEGORY(lcCloudAccount, "tidemark.cloud.account")

namespace {

constexpr const char* kKeychainService = "tidemark-cloud";

/// Passwords known to this process, by account; the only copy where no Secret Service answers.
std::mutex gPasswordsMutex;
std::map<QString, QString>& knownPasswords() {
    static std::map<QString, QString> passwords;
    return passwords;
}

/// The thread every Secret Service job runs on. QtKeychain runs its jobs one after another
/// through a queue of its own, which must stay on one thread whoever asks; the thread ends
/// with the application.
std::mutex gKeychainMutex;
QThread* gKeychainThread = nullptr;
QObject* gKeychainHome = nullptr;

void stopKeychainThread() {
    std::lock_guard lock(gKeychainMutex);
    if (!gKeychainThread) {
        return;
    }
    gKeychainThread->quit();
    gKeychainThread->wait();
    delete gKeychainHome;
    delete gKeychainThread;
    gKeychainThread = nullptr;
    gKeychainHome = nullptr;
}

void onKeychainThread(std::function<void()> work) {
    std::lock_guard lock(gKeychainMutex);
    if (!gKeychainThread) {
        gKeychainThread = new QThread;
        gKeychainThread->setObjectName(QStringLiteral("tidemark-keychain"));
        gKeychainHome = new QObject;
        gKeychainHome->moveToThread(gKeychainThread);
        gKeychainThread->start();
        qAddPostRoutine(stopKeychainThread);
    }
    QMetaObject::invokeMethod(gKeychainHome, std::move(work), Qt::QueuedConnection);
}

/// Hands work to `context`'s thread from any thread, safely even while `context` is being
/// destroyed: once it is gone, the work is dropped.
class Relay {
public:
    static std::shared_ptr<Relay> to(QObject* context) {
        auto relay = std::shared_ptr<Relay>(new Relay(context));
        relay->watch_ = QObject::connect(
            context, &QObject::destroyed, context,
            [weak = std::weak_ptr<Relay>(relay)] {
                if (auto r = weak.lock()) {
                    std::lock_guard lock(r->mutex_);
                    r->context_ = nullptr;
                }
            },
            Qt::DirectConnection);
        return relay;
    }
    ~Relay() { QObject::disconnect(watch_); }

    void post(std::function<void()> work) {
        std::lock_guard lock(mutex_);
        if (context_) {
            QMetaObject::invokeMethod(context_, std::move(work), Qt::QueuedConnection);
        }
    }

private:
    explicit Relay(QObject* context) : context_(context) {}
    std::mutex mutex_;
    QObject* context_;
    QMetaObject::Connection watch_;
};

template <class Job> Job* makeJob(const QString& key) {
    auto* job = new Job(QString::fromLatin1(kKeychainService));
    job->setAutoDelete(true);
    job->setInsecureFallback(false); // never a clear-text copy in a settings file
    job->setKey(key);
    return job;
}

/// Puts colons between the byte pairs of a hexadecimal fingerprint, upper case.
QString normalisedFingerprint(const QString& fingerprint) {
    QString hex;
    for (const QChar c : fingerprint) {
        if (c.isLetterOrNumber()) {
            hex.append(c.toUpper());
        }
    }
    QString out;
    for (qsizetype i = 0; i < hex.size(); i += 2) {
        if (!out.isEmpty()) {
            out.append(u':');
        }
        out.append(hex.mid(i, 2));
    }
    return out;
}

} // namespace

CloudAccount::CloudAccount(DefaultsSuite& settings)
    : serverAddress_("LINUX_CLOUD_serverAddress", "", settings),
      userName_("LINUX_CLOUD_userName", "", settings),
      pinnedCertificate_("LINUX_CLOUD_pinnedCertificate", "", settings) {}

QUrl CloudAccount::serverAddress() const {
    return QUrl::fromEncoded(QByteArray::fromStdString(serverAddress_.get()), QUrl::StrictMode);
}

bool CloudAccount::setServerAddress(const QUrl& address) {
    const QString scheme = address.scheme().toLower();
    if (!address.isValid() || (scheme != u"http" && scheme != u"https") ||
        address.host().isEmpty()) {
        return false;
    }
    QUrl clean = address;
    clean.setUserInfo({});
    clean.setQuery(QString());
    clean.setFragment(QString());
    serverAddress_.set(clean.toEncoded().toStdString());
    return true;
}

QString CloudAccount::userName() const {
    return QString::fromStdString(userName_.get());
}

void CloudAccount::setUserName(const QString& name) {
    userName_.set(name.toStdString());
}

bool CloudAccount::configured() const {
    return !serverAddress().isEmpty() && !userName().isEmpty();
}

QString CloudAccount::pinnedCertificate() const {
    return QString::fromStdString(pinnedCertificate_.get());
}

void CloudAccount::pinCertificate(const QString& sha256Fingerprint) {
    pinnedCertificate_.set(normalisedFingerprint(sha256Fingerprint).toStdString());
}

QString CloudAccount::passwordKey() const {
    return userName() + u'@' + QString::fromStdString(serverAddress_.get());
}

void CloudAccount::setPassword(const QString& password, QObject* context,
                               std::function<void(bool)> done) {
    const QString key = passwordKey();
    {
        std::lock_guard lock(gPasswordsMutex);
        knownPasswords()[key] = password;
    }
    onKeychainThread([key, password, relay = Relay::to(context), done = std::move(done)] {
        auto* job = makeJob<QKeychain::WritePasswordJob>(key);
        job->setTextData(password);
        QObject::connect(job, &QKeychain::Job::finished, job, [relay, done](QKeychain::Job* j) {
            const bool kept = j->error() == QKeychain::NoError;
            if (!kept) {
                qCInfo(lcCloudAccount).noquote()
                    << "The Secret Service didn't take the cloud password (" + j->errorString() +
                           "); it is kept in memory until the program ends";
            }
            relay->post([done, kept] {
                if (done) {
                    done(kept);
                }
            });
        });
        job->start();
    });
}

void CloudAccount::keepPasswordInMemory(const QString& password) {
    std::lock_guard lock(gPasswordsMutex);
    knownPasswords()[passwordKey()] = password;
}

void CloudAccount::readPassword(QObject* context,
                                std::function<void(std::optional<QString>)> done) const {
    const QString key = passwordKey();
    auto relay = Relay::to(context);
    {
        std::lock_guard lock(gPasswordsMutex);
        const auto found = knownPasswords().find(key);
        if (found != knownPasswords().end()) {
            relay->post([done = std::move(done), password = found->second] { done(password); });
            return;
        }
    }
    onKeychainThread([key, relay, done = std::move(done)] {
        auto* job = makeJob<QKeychain::ReadPasswordJob>(key);
        QObject::connect(
            job, &QKeychain::Job::finished, job, [key, relay, done](QKeychain::Job* j) {
                std::optional<QString> password;
                if (j->error() == QKeychain::NoError) {
                    password = static_cast<QKeychain::ReadPasswordJob*>(j)->textData();
                    std::lock_guard lock(gPasswordsMutex);
                    knownPasswords()[key] = *password;
                } else if (j->error() != QKeychain::EntryNotFound) {
                    qCInfo(lcCloudAccount).noquote()
                        << "The cloud password can't be read from the Secret Service: " +
                               j->errorString();
                }
                relay->post([done, password] { done(password); });
            });
        job->start();
    });
}

void CloudAccount::forgetPassword(QObject* context, std::function<void()> done) {
    const QString key = passwordKey();
    {
        std::lock_guard lock(gPasswordsMutex);
        knownPasswords().erase(key);
    }
    onKeychainThread([key, relay = Relay::to(context), done = std::move(done)] {
        auto* job = makeJob<QKeychain::DeletePasswordJob>(key);
        QObject::connect(job, &QKeychain::Job::finished, job, [relay, done](QKeychain::Job*) {
            relay->post([done] {
                if (done) {
                    done();
                }
            });
        });
        job->start();
    });
}

} // namespace tidemark
