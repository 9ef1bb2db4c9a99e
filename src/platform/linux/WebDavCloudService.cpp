#include "platform/linux/WebDavCloudService.h"

#include "cloud/CloudRecordMapping.h"
#include "platform/linux/WebDavMultistatus.h"

#include <QLoggingCategory>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>
#include <QThread>
#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <set>

namespace tidemark {

Q_LOGGING_CATEGORY(lcCloud, "tidemark.cloud", QtInfoMsg)

namespace {

/// A reply larger than this is cut off as an error: records are small, and a listing of tens of
/// thousands of them stays far below.
constexpr qint64 kLargestReply = 64 * 1024 * 1024;
/// Requests in flight at once for the records of one operation.
constexpr int kParallelRequests = 4;
/// How often a changed-keys save reads again after a 412.
constexpr int kConditionalRetries = 2;
constexpr std::size_t kDefaultPageSize = 200;

const QByteArray kPropfindResource =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    R"(<d:propfind xmlns:d="DAV:"><d:prop><d:resourcetype/><d:getetag/></d:prop></d:propfind>)";
const QByteArray kPropfindPrincipal = R"(<?xml version="1.0" encoding="utf-8"?>)"
                                      R"(<d:propfind xmlns:d="DAV:"><d:prop>)"
                                      R"(<d:current-user-principal/></d:prop></d:propfind>)";

// The record files hold the JSON form of CloudRecordMapping.h.

std::optional<QByteArray> encodeRecordJson(const CloudRecord& record, QString*) {
    return QByteArray::fromStdString(encodeCloudRecordJson(record));
}

std::optional<CloudRecord> decodeRecordJson(QByteArrayView json, const std::string& zoneName,
                                            QString* error) {
    JsonDecodeError why;
    auto record = decodeCloudRecordJson(
        std::string_view(json.data(), static_cast<std::size_t>(json.size())), zoneName, &why);
    if (!record) {
        *error = QString::fromStdString(why.message);
    }
    return record;
}

std::optional<std::string> zoneOfRecordType(const std::string& recordType) {
    if (recordType == "eventInfo") {
        return "eventZone";
    }
    if (recordType == "memoDataForNotiObject") {
        return "memoZone";
    }
    return std::nullopt;
}

/// The file of a record: its name with "%" and "/" escaped (no server takes a "/" in a file name,
/// and most refuse it percent-encoded in a path), then ".json".
QString recordFileName(const std::string& recordName) {
    return QString::fromStdString(recordName)
               .replace(u'%', QStringLiteral("%25"))
               .replace(u'/', QStringLiteral("%2F")) +
           QStringLiteral(".json");
}

/// The record name of a file in a zone; nothing when the file is no record.
std::optional<std::string> recordNameOfFile(const QString& fileName) {
    if (!fileName.endsWith(u".json")) {
        return std::nullopt;
    }
    const QString escaped = fileName.chopped(5);
    QString name;
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        const QString code = escaped.mid(i + 1, 2).toUpper();
        if (escaped[i] == u'%' && (code == u"25" || code == u"2F")) {
            name.append(code == u"25" ? u'%' : u'/');
            i += 2;
        } else {
            name.append(escaped[i]);
        }
    }
    return name.toStdString();
}

/// The record as held with the given keys replaced and the keys it lacked added after its own.
CloudRecord withChangedKeys(CloudRecord held, const CloudRecord& changes) {
    held.recordType = changes.recordType;
    held.id = changes.id;
    for (const auto& [key, value] : changes.fields) {
        auto found = std::find_if(held.fields.begin(), held.fields.end(),
                                  [&](const auto& field) { return field.first == key; });
        if (found != held.fields.end()) {
            found->second = value;
        } else {
            held.fields.emplace_back(key, value);
        }
    }
    return held;
}

CloudError cloudError(const QString& message, bool notFound = false) {
    return CloudError{message.toStdString(), notFound};
}

QString inQuotes(const std::string& text) {
    return u'"' + QString::fromStdString(text) + u'"';
}

QString fingerprint(const QSslCertificate& certificate) {
    return QString::fromLatin1(certificate.digest(QCryptographicHash::Sha256).toHex(':').toUpper());
}

/// The certificate errors that only say the system doesn't trust the certificate, which a
/// pinned fingerprint answers; anything else (expiry, wrong host, revocation) stays an error.
bool onlyUntrusted(const QSslError& error) {
    switch (error.error()) {
    case QSslError::SelfSignedCertificate:
    case QSslError::SelfSignedCertificateInChain:
    case QSslError::CertificateUntrusted:
    case QSslError::UnableToGetLocalIssuerCertificate:
    case QSslError::UnableToGetIssuerCertificate:
    case QSslError::UnableToVerifyFirstCertificate:
        return true;
    default:
        return false;
    }
}

bool succeeded(int status) {
    return status >= 200 && status < 300;
}

/// An ETag that If-Match can use: a weak one only says the content is about the same.
bool isStrong(const QByteArray& etag) {
    return !etag.isEmpty() && !etag.startsWith("W/");
}

/// Runs task(i, finished) for every i below `count`, a few at a time, then `allDone`. A task may
/// finish at once; the tasks are started in a loop, not by recursion.
class Batch : public std::enable_shared_from_this<Batch> {
public:
    using Task = std::function<void(std::size_t, std::function<void()>)>;

    static void run(std::size_t count, Task task, std::function<void()> allDone) {
        if (count == 0) {
            allDone();
            return;
        }
        std::shared_ptr<Batch> batch(new Batch(count, std::move(task), std::move(allDone)));
        batch->pump();
    }

private:
    Batch(std::size_t count, Task task, std::function<void()> allDone)
        : count_(count), task_(std::move(task)), allDone_(std::move(allDone)) {}

    void pump() {
        if (pumping_) {
            return;
        }
        pumping_ = true;
        while (running_ < kParallelRequests && next_ < count_) {
            ++running_;
            task_(next_++, [self = shared_from_this()] { self->finishedOne(); });
        }
        pumping_ = false;
    }
    void finishedOne() {
        --running_;
        if (++finished_ == count_) {
            allDone_();
            return;
        }
        pump();
    }

    std::size_t count_, next_ = 0, finished_ = 0;
    int running_ = 0;
    bool pumping_ = false;
    Task task_;
    std::function<void()> allDone_;
};

} // namespace

using Headers = std::vector<std::pair<QByteArray, QByteArray>>;

class WebDavCloudService::Worker final : public QObject {
public:
    Worker(DefaultsSuite& settings, std::chrono::milliseconds timeout)
        : account_(settings), timeout_(timeout) {}

    /// Fails everything that is running or waiting; nothing new starts after it.
    void shutdown() {
        stopping_ = true;
        auto waiting = std::move(awaitingPassword_);
        awaitingPassword_.clear();
        for (auto& entry : waiting) {
            entry.second(AccountOrWhy{std::nullopt, stoppedError(), false});
        }
        const auto running = running_;
        for (QNetworkReply* reply : running) {
            reply->abort();
        }
        delete network_;
        network_ = nullptr;
    }

    void setHook(std::function<void(const CloudRecordId&, int)> hook) { hook_ = std::move(hook); }

    void testConnection(std::function<void(ConnectionCheck)> done) {
        withAccount([this, done](AccountOrWhy a) {
            if (!a.account) {
                done({a.noCredentials ? CloudAccountStatus::noAccount
                                      : CloudAccountStatus::couldNotDetermine,
                      a.why,
                      {}});
                return;
            }
            const QUrl url = a.account->base;
            send(*a.account, "PROPFIND", url, {{"Depth", "0"}}, kPropfindResource,
                 [url, done](const HttpResult& r) {
                     ConnectionCheck check;
                     if (r.status == 207) {
                         const auto listing = readMultistatus(r.body);
                         if (listing.error.isEmpty()) {
                             check.status = CloudAccountStatus::available;
                         } else {
                             check.error = cloudError(listing.error);
                         }
                     } else if (r.status == 401 || r.status == 403) {
                         check.status = CloudAccountStatus::noAccount;
                         check.error =
                             cloudError(QStringLiteral("The server refused the user name or "
                                                       "password (%1 %2)")
                                            .arg(r.status)
                                            .arg(r.reason));
                     } else {
                         check.error = cloudError(r.failureOf("PROPFIND", url));
                         check.untrustedCertificate = r.untrustedCertificate;
                     }
                     done(check);
                 });
        });
    }

    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) {
        withAccount([this, done](AccountOrWhy a) {
            if (!a.account) {
                done(std::nullopt, a.why);
                return;
            }
            const Account account = *a.account;
            send(account, "PROPFIND", account.base, {{"Depth", "0"}}, kPropfindPrincipal,
                 [account, done](const HttpResult& r) {
                     if (r.status != 207) {
                         done(std::nullopt, cloudError(r.failureOf("PROPFIND", account.base)));
                         return;
                     }
                     const auto listing = readMultistatus(r.body);
                     if (!listing.error.isEmpty()) {
                         done(std::nullopt, cloudError(listing.error));
                         return;
                     }
                     for (const auto& resource : listing.resources) {
                         if (resource.currentUserPrincipal &&
                             !resource.currentUserPrincipal->isEmpty()) {
                             done(resource.currentUserPrincipal->toStdString(), std::nullopt);
                             return;
                         }
                     }
                     // Servers without principals (plain mod_dav): the user at the server.
                     done((account.user + u'@' + account.base.host()).toStdString(), std::nullopt);
                 });
        });
    }

    void
    fetchZone(const std::string& zoneName,
              std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) {
        withAccount([this, zoneName, done](AccountOrWhy a) {
            if (!a.account) {
                done(std::nullopt, a.why);
                return;
            }
            const QUrl url = zoneUrl(*a.account, zoneName);
            send(*a.account, "PROPFIND", url, {{"Depth", "0"}}, kPropfindResource,
                 [url, zoneName, done](const HttpResult& r) {
                     if (r.status == 404) {
                         done(std::nullopt,
                              cloudError(QStringLiteral("There is no zone %1 on the server")
                                             .arg(inQuotes(zoneName)),
                                         true));
                         return;
                     }
                     if (r.status != 207) {
                         done(std::nullopt, cloudError(r.failureOf("PROPFIND", url)));
                         return;
                     }
                     const auto listing = readMultistatus(r.body);
                     if (!listing.error.isEmpty()) {
                         done(std::nullopt, cloudError(listing.error));
                     } else if (listing.resources.empty() || !listing.resources[0].collection) {
                         done(std::nullopt,
                              cloudError(QStringLiteral("The zone %1 on the server is no folder")
                                             .arg(inQuotes(zoneName)),
                                         true));
                     } else {
                         done(zoneName, std::nullopt);
                     }
                 });
        });
    }

    void saveZone(const std::string& zoneName,
                  std::function<void(std::optional<CloudError>)> done) {
        withAccount([this, zoneName, done](AccountOrWhy a) {
            if (!a.account) {
                done(a.why);
                return;
            }
            const Account account = *a.account;
            const QUrl container = containerUrl(account);
            // The container first. Its answer decides nothing unless none came: it may be there
            // already (405, or 201 again from some servers), or just being made by a
            // concurrent request (mod_dav then answers 403); the zone's own answer tells.
            send(account, "MKCOL", container, {}, {},
                 [this, account, container, zoneName, done](const HttpResult& made) {
                     if (made.status == 0) {
                         done(cloudError(made.failureOf("MKCOL", container)));
                         return;
                     }
                     const QUrl zone = zoneUrl(account, zoneName);
                     send(account, "MKCOL", zone, {}, {},
                          [this, zoneName, zone, done](const HttpResult& r) {
                              if (succeeded(r.status)) {
                                  done(std::nullopt);
                              } else if (r.status == 0 || r.status == 401) {
                                  done(cloudError(r.failureOf("MKCOL", zone)));
                              } else {
                                  // Something may have that name: fine if it is the zone's
                                  // folder.
                                  const auto failure = cloudError(r.failureOf("MKCOL", zone));
                                  const bool taken = r.status == 405;
                                  fetchZone(zoneName,
                                            [done, failure, taken](std::optional<std::string> found,
                                                                   std::optional<CloudError> why) {
                                                done(found ? std::nullopt : taken ? why : failure);
                                            });
                              }
                          });
                 });
        });
    }

    void
    fetchRecord(const CloudRecordId& id,
                std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) {
        withAccount([this, id, done](AccountOrWhy a) {
            if (!a.account) {
                done(std::nullopt, a.why);
                return;
            }
            getRecord(*a.account, id,
                      [done](std::optional<CloudRecord> record, QString error, bool notFound) {
                          if (record) {
                              done(std::move(record), std::nullopt);
                          } else {
                              done(std::nullopt, cloudError(error, notFound));
                          }
                      });
        });
    }

    void saveRecord(const CloudRecord& record,
                    std::function<void(std::optional<CloudError>)> done) {
        withAccount([this, record, done](AccountOrWhy a) {
            if (!a.account) {
                done(a.why);
                return;
            }
            QString why;
            const auto body = encodeRecordJson(record, &why);
            if (!body) {
                done(cloudError(cannotWrite(record.id, why)));
                return;
            }
            const QUrl url = recordUrl(*a.account, record.id);
            send(*a.account, "PUT", url,
                 {{"If-None-Match", "*"}, {"Content-Type", "application/json"}}, *body,
                 [record, url, done](const HttpResult& r) {
                     if (succeeded(r.status)) {
                         done(std::nullopt);
                     } else if (r.status == 412) {
                         done(cloudError(QStringLiteral("The record %1 already exists in %2")
                                             .arg(inQuotes(record.id.recordName),
                                                  inQuotes(record.id.zoneName))));
                     } else {
                         done(cloudError(r.failureOf("PUT", url)));
                     }
                 });
        });
    }

    void modifyRecords(std::vector<CloudRecord> toSave, std::vector<CloudRecordId> toDelete,
                       std::function<void(std::optional<CloudError>)> done) {
        withAccount([this, toSave = std::move(toSave), toDelete = std::move(toDelete),
                     done](AccountOrWhy a) {
            if (!a.account) {
                done(a.why);
                return;
            }
            const Account account = *a.account;
            const std::size_t saves = toSave.size();
            const std::size_t total = saves + toDelete.size();
            auto failures = std::make_shared<std::vector<QString>>();
            Batch::run(
                total,
                [this, account, toSave, toDelete, saves, failures](std::size_t i,
                                                                   std::function<void()> finished) {
                    auto note = [failures, finished](std::optional<QString> failure) {
                        if (failure) {
                            failures->push_back(*failure);
                        }
                        finished();
                    };
                    if (i < saves) {
                        saveChangedKeys(account, toSave[i], 0, note);
                    } else {
                        deleteRecord(account, toDelete[i - saves], note);
                    }
                },
                [failures, total, done] {
                    if (failures->empty()) {
                        done(std::nullopt);
                    } else {
                        done(cloudError(QStringLiteral("%1 of %2 changes failed; the first: %3")
                                            .arg(failures->size())
                                            .arg(total)
                                            .arg(failures->front())));
                    }
                });
        });
    }

    void queryRecords(const std::string& recordType, std::optional<CloudQueryCursor> cursor,
                      std::size_t limit,
                      std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                         std::optional<CloudError>)>
                          done) {
        const auto zoneName = zoneOfRecordType(recordType);
        if (!zoneName) {
            done({}, std::nullopt,
                 cloudError(
                     QStringLiteral("No zone holds records of type %1").arg(inQuotes(recordType))));
            return;
        }
        if (cursor && cursor->recordType != recordType) {
            done({}, std::nullopt,
                 cloudError(QStringLiteral("The cursor belongs to a query of another type")));
            return;
        }
        withAccount([this, recordType, zoneName = *zoneName,
                     position = cursor ? cursor->position : 0,
                     limit = limit ? limit : kDefaultPageSize, done](AccountOrWhy a) {
            if (!a.account) {
                done({}, std::nullopt, a.why);
                return;
            }
            const Account account = *a.account;
            const QUrl url = zoneUrl(account, zoneName);
            // The pages after the first come from the first page's listing: the zone is listed
            // once per query, not once per page.
            const auto listed = listings_.find(recordType);
            if (position > 0 && listed != listings_.end() && listed->second.zone == url) {
                servePage(account, zoneName, recordType, listed->second.names, position, limit,
                          done);
                return;
            }
            listings_.erase(recordType);
            send(account, "PROPFIND", url, {{"Depth", "1"}}, kPropfindResource,
                 [this, account, url, recordType, zoneName, position, limit,
                  done](const HttpResult& r) {
                     if (r.status != 207) {
                         done({}, std::nullopt,
                              r.status == 404
                                  ? cloudError(QStringLiteral("There is no zone %1 on the server")
                                                   .arg(inQuotes(zoneName)),
                                               true)
                                  : cloudError(r.failureOf("PROPFIND", url)));
                         return;
                     }
                     const auto listing = readMultistatus(r.body);
                     if (!listing.error.isEmpty()) {
                         done({}, std::nullopt, cloudError(listing.error));
                         return;
                     }
                     // By name, so that a position means the same record from page to page.
                     std::vector<std::string> names;
                     for (const auto& member : listing.resources) {
                         const auto name = recordNameOfFile(member.name);
                         if (name && !member.collection &&
                             (member.status == 0 || succeeded(member.status))) {
                             names.push_back(*name);
                         }
                     }
                     std::sort(names.begin(), names.end());
                     names.erase(std::unique(names.begin(), names.end()), names.end());
                     auto& kept = listings_[recordType];
                     kept = {url, std::move(names)};
                     servePage(account, zoneName, recordType, kept.names, position, limit, done);
                 });
        });
    }

private:
    struct Account {
        QUrl base; ///< the address, ending in "/"
        QString user;
        QByteArray authorization;
        QString pinnedCertificate;
    };
    struct AccountOrWhy {
        std::optional<Account> account;
        std::optional<CloudError> why;
        bool noCredentials = false;
    };
    struct HttpResult {
        int status = 0; ///< 0 when no answer came
        QString reason;
        QByteArray body;
        QByteArray etag;
        QString failure; ///< why no answer came
        QString untrustedCertificate;

        /// The request's failure in words.
        QString failureOf(const char* verb, const QUrl& url) const {
            if (status == 0) {
                return failure;
            }
            return QStringLiteral("The server answered %1 %2 to %3 %4")
                .arg(status)
                .arg(reason, QString::fromLatin1(verb), url.toDisplayString());
        }
    };

    /// The names a query listed, for its later pages.
    struct Listing {
        QUrl zone;
        std::vector<std::string> names;
    };

    /// The page of `names` from `position` on; the listing is dropped with the last page.
    void servePage(const Account& account, const std::string& zoneName,
                   const std::string& recordType, const std::vector<std::string>& names,
                   std::size_t position, std::size_t limit,
                   std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                      std::optional<CloudError>)>
                       done) {
        const std::size_t start = std::min(position, names.size());
        const std::size_t end = std::min(names.size(), start + limit);
        std::optional<CloudQueryCursor> next;
        if (end < names.size()) {
            next = CloudQueryCursor{recordType, end};
        }
        std::vector<std::string> page(names.begin() + static_cast<long>(start),
                                      names.begin() + static_cast<long>(end));
        if (!next) {
            listings_.erase(recordType);
        }
        getPage(account, zoneName, recordType, std::move(page),
                [next, done](std::vector<CloudRecord> records, std::optional<CloudError> error) {
                    if (error) {
                        done({}, std::nullopt, std::move(error));
                    } else {
                        done(std::move(records), next, std::nullopt);
                    }
                });
    }

    static CloudError stoppedError() {
        return cloudError(QStringLiteral("The cloud service has stopped"));
    }
    static QString cannotRead(const CloudRecordId& id, const QString& why) {
        return QStringLiteral("The record %1 in %2 can't be read: %3")
            .arg(inQuotes(id.recordName), inQuotes(id.zoneName), why);
    }
    static QString cannotWrite(const CloudRecordId& id, const QString& why) {
        return QStringLiteral("The record %1 in %2 can't be written: %3")
            .arg(inQuotes(id.recordName), inQuotes(id.zoneName), why);
    }

    static QUrl containerUrl(const Account& account) {
        return account.base.resolved(QUrl(QString::fromLatin1(kCloudContainerName) + u'/'));
    }
    static QUrl zoneUrl(const Account& account, const std::string& zoneName) {
        return containerUrl(account).resolved(
            QUrl::fromEncoded(QUrl::toPercentEncoding(QString::fromStdString(zoneName)) + '/'));
    }
    static QUrl recordUrl(const Account& account, const CloudRecordId& id) {
        return zoneUrl(account, id.zoneName)
            .resolved(QUrl::fromEncoded(QUrl::toPercentEncoding(recordFileName(id.recordName))));
    }

    QNetworkAccessManager& network() {
        if (!network_) {
            network_ = new QNetworkAccessManager(this);
            network_->setRedirectPolicy(QNetworkRequest::SameOriginRedirectPolicy);
        }
        return *network_;
    }

    /// The account with its password, or why there is none; `next` runs later.
    void withAccount(std::function<void(AccountOrWhy)> next) {
        if (stopping_) {
            next({std::nullopt, stoppedError(), false});
            return;
        }
        QUrl address = account_.serverAddress();
        const QString user = account_.userName();
        if (address.isEmpty() || user.isEmpty()) {
            next({std::nullopt,
                  cloudError(QStringLiteral("No cloud account is set up on this device")), true});
            return;
        }
        if (!address.path().endsWith(u'/')) {
            address.setPath(address.path() + u'/');
        }
        const quint64 ticket = ++lastTicket_;
        awaitingPassword_.emplace(ticket, std::move(next));
        account_.readPassword(this, [this, ticket, address, user](std::optional<QString> password) {
            const auto found = awaitingPassword_.find(ticket);
            if (found == awaitingPassword_.end()) {
                return; // failed at shutdown
            }
            const auto next = std::move(found->second);
            awaitingPassword_.erase(found);
            if (!password) {
                next({std::nullopt,
                      cloudError(
                          QStringLiteral("The password of the cloud account is not known here")),
                      true});
                return;
            }
            Account account{address, user, "Basic " + (user + u':' + *password).toUtf8().toBase64(),
                            account_.pinnedCertificate()};
            next({std::move(account), std::nullopt, false});
        });
    }

    /// One request; `done` gets the status and body, or why no answer came.
    void send(const Account& account, const QByteArray& verb, const QUrl& url,
              const Headers& headers, const QByteArray& body,
              std::function<void(const HttpResult&)> done) {
        if (stopping_) {
            HttpResult stopped;
            stopped.failure = QString::fromStdString(stoppedError().message);
            done(stopped);
            return;
        }
        if (account.pinnedCertificate != connectionsPinned_) {
            // Open connections were accepted under the old pin: none may outlive it.
            network().clearConnectionCache();
            connectionsPinned_ = account.pinnedCertificate;
        }
        QNetworkRequest request(url);
        request.setTransferTimeout(static_cast<int>(timeout_.count()));
        request.setRawHeader("Authorization", account.authorization);
        if (!body.isEmpty() && verb == "PROPFIND") {
            request.setRawHeader("Content-Type", "application/xml; charset=utf-8");
        }
        for (const auto& [name, value] : headers) {
            request.setRawHeader(name, value);
        }
        qCDebug(lcCloud).noquote() << verb << url.toDisplayString();
        QNetworkReply* reply = network().sendCustomRequest(request, verb, body);
        running_.insert(reply);

        struct Trouble {
            QString certificate, certificateErrors;
            bool tooLarge = false;
        };
        auto trouble = std::make_shared<Trouble>();
        connect(
            reply, &QNetworkReply::sslErrors, this,
            [reply, trouble, pinned = account.pinnedCertificate](const QList<QSslError>& errors) {
                QSslCertificate leaf = reply->sslConfiguration().peerCertificate();
                if (leaf.isNull() && !errors.isEmpty()) {
                    leaf = errors.front().certificate();
                }
                const QString print = leaf.isNull() ? QString() : fingerprint(leaf);
                const bool pinnedLeaf = !print.isEmpty() && print == pinned;
                if (pinnedLeaf && std::all_of(errors.begin(), errors.end(), onlyUntrusted)) {
                    reply->ignoreSslErrors(errors);
                    return;
                }
                QStringList texts;
                for (const auto& error : errors) {
                    texts.append(error.errorString());
                }
                trouble->certificate = print;
                trouble->certificateErrors = texts.join(QStringLiteral("; "));
            });
        connect(reply, &QNetworkReply::downloadProgress, this,
                [reply, trouble](qint64 received, qint64) {
                    if (received > kLargestReply && !trouble->tooLarge) {
                        trouble->tooLarge = true;
                        reply->abort();
                    }
                });
        connect(
            reply, &QNetworkReply::finished, this, [this, reply, trouble, done = std::move(done)] {
                running_.erase(reply);
                reply->deleteLater();
                HttpResult result;
                result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
                result.reason =
                    reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
                if (trouble->tooLarge) {
                    result.status = 0;
                    result.failure = QStringLiteral("The server's reply is larger than %1 MiB")
                                         .arg(kLargestReply / (1024 * 1024));
                } else if (result.status == 0) {
                    result.failure = whyNoAnswer(*reply, *trouble);
                    result.untrustedCertificate = trouble->certificate;
                } else {
                    result.body = reply->readAll();
                    result.etag = reply->rawHeader("ETag");
                }
                done(result);
            });
    }

    template <class Trouble> QString whyNoAnswer(QNetworkReply& reply, const Trouble& trouble) {
        if (stopping_) {
            return QString::fromStdString(stoppedError().message);
        }
        if (!trouble.certificateErrors.isEmpty()) {
            return QStringLiteral("The server's certificate is not trusted (%1). Its SHA-256 "
                                  "fingerprint is %2; accept it only if that is your server's.")
                .arg(trouble.certificateErrors, trouble.certificate);
        }
        switch (reply.error()) {
        case QNetworkReply::OperationCanceledError:
        case QNetworkReply::TimeoutError:
            return QStringLiteral("The server didn't answer for %1 seconds (%2)")
                .arg(static_cast<double>(timeout_.count()) / 1000.0)
                .arg(reply.url().toDisplayString());
        default:
            return QStringLiteral("The server can't be reached: %1").arg(reply.errorString());
        }
    }

    /// The record in a file's content, checked to be the one the file is named for.
    static std::optional<CloudRecord> readRecordFile(const QByteArray& content,
                                                     const CloudRecordId& id, QString* why) {
        auto record = decodeRecordJson(content, id.zoneName, why);
        if (record && record->id.recordName != id.recordName) {
            *why = QStringLiteral("it holds the record %1").arg(inQuotes(record->id.recordName));
            return std::nullopt;
        }
        return record;
    }

    void getRecord(const Account& account, const CloudRecordId& id,
                   std::function<void(std::optional<CloudRecord>, QString, bool notFound)> done) {
        const QUrl url = recordUrl(account, id);
        send(account, "GET", url, {}, {}, [id, url, done](const HttpResult& r) {
            if (r.status == 404) {
                done(std::nullopt,
                     QStringLiteral("There is no record %1 in %2")
                         .arg(inQuotes(id.recordName), inQuotes(id.zoneName)),
                     true);
                return;
            }
            if (r.status != 200) {
                done(std::nullopt, r.failureOf("GET", url), false);
                return;
            }
            QString why;
            auto record = readRecordFile(r.body, id, &why);
            if (!record) {
                done(std::nullopt, cannotRead(id, why), false);
                return;
            }
            done(std::move(record), {}, false);
        });
    }

    /// The records of `names` in order, fetched a few at a time; one gone meanwhile is left out.
    void getPage(const Account& account, const std::string& zoneName, const std::string& recordType,
                 std::vector<std::string> names,
                 std::function<void(std::vector<CloudRecord>, std::optional<CloudError>)> done) {
        struct Page {
            std::vector<std::optional<CloudRecord>> records;
            std::optional<QString> failure;
        };
        auto page = std::make_shared<Page>();
        page->records.resize(names.size());
        Batch::run(
            names.size(),
            [this, account, zoneName, names, page](std::size_t i, std::function<void()> finished) {
                if (page->failure) {
                    finished();
                    return;
                }
                getRecord(account, {zoneName, names[i]},
                          [page, i, finished](std::optional<CloudRecord> record, QString error,
                                              bool notFound) {
                              if (record) {
                                  page->records[i] = std::move(record);
                              } else if (!notFound && !page->failure) {
                                  page->failure = error;
                              }
                              finished();
                          });
            },
            [page, recordType, done] {
                if (page->failure) {
                    done({}, cloudError(*page->failure));
                    return;
                }
                std::vector<CloudRecord> records;
                for (auto& record : page->records) {
                    if (record && record->recordType == recordType) {
                        records.push_back(std::move(*record));
                    }
                }
                done(std::move(records), std::nullopt);
            });
    }

    /// Read, merge, write on condition; `done` gets the failure in words, if any.
    void saveChangedKeys(const Account& account, const CloudRecord& record, int attempt,
                         std::function<void(std::optional<QString>)> done) {
        const QUrl url = recordUrl(account, record.id);
        send(account, "GET", url, {}, {}, [=, this](const HttpResult& held) {
            std::optional<CloudRecord> merged;
            Headers headers{{"Content-Type", "application/json"}};
            if (held.status == 404) {
                merged = record;
                headers.emplace_back("If-None-Match", "*");
            } else if (held.status == 200) {
                QString why;
                const auto current = readRecordFile(held.body, record.id, &why);
                if (!current) {
                    done(cannotRead(record.id, why));
                    return;
                }
                merged = withChangedKeys(*current, record);
                if (isStrong(held.etag)) {
                    headers.emplace_back("If-Match", held.etag);
                }
                if (hook_) {
                    hook_(record.id, attempt);
                }
            } else {
                done(held.failureOf("GET", url));
                return;
            }
            QString why;
            const auto body = encodeRecordJson(*merged, &why);
            if (!body) {
                done(cannotWrite(record.id, why));
                return;
            }
            send(account, "PUT", url, headers, *body, [=, this](const HttpResult& put) {
                if (succeeded(put.status)) {
                    done(std::nullopt);
                } else if (put.status == 412 && attempt < kConditionalRetries) {
                    saveChangedKeys(account, record, attempt + 1, done);
                } else if (put.status == 412) {
                    done(QStringLiteral("The record %1 in %2 kept changing on the server while "
                                        "it was being saved")
                             .arg(inQuotes(record.id.recordName), inQuotes(record.id.zoneName)));
                } else {
                    done(put.failureOf("PUT", url));
                }
            });
        });
    }

    void deleteRecord(const Account& account, const CloudRecordId& id,
                      std::function<void(std::optional<QString>)> done) {
        const QUrl url = recordUrl(account, id);
        send(account, "DELETE", url, {}, {}, [url, done](const HttpResult& r) {
            if (succeeded(r.status) || r.status == 404) {
                done(std::nullopt);
            } else {
                done(r.failureOf("DELETE", url));
            }
        });
    }

    CloudAccount account_;
    std::chrono::milliseconds timeout_;
    QNetworkAccessManager* network_ = nullptr;
    QString connectionsPinned_;
    std::set<QNetworkReply*> running_;
    std::map<quint64, std::function<void(AccountOrWhy)>> awaitingPassword_;
    std::map<std::string, Listing> listings_; ///< by record type
    quint64 lastTicket_ = 0;
    bool stopping_ = false;
    std::function<void(const CloudRecordId&, int)> hook_;
};

WebDavCloudService::WebDavCloudService(DefaultsSuite& settings, std::chrono::milliseconds timeout)
    : thread_(new QThread), worker_(new Worker(settings, timeout)) {
    thread_->setObjectName(QStringLiteral("tidemark-cloud"));
    worker_->moveToThread(thread_);
    thread_->start();
}

WebDavCloudService::~WebDavCloudService() {
    if (QThread::currentThread() == thread_) {
        // Destroyed by one of its own completions: the thread can't wait for itself.
        worker_->shutdown();
        worker_->deleteLater();
        QObject::connect(thread_, &QThread::finished, thread_, &QObject::deleteLater);
        thread_->quit();
        return;
    }
    QMetaObject::invokeMethod(
        worker_, [worker = worker_] { worker->shutdown(); }, Qt::BlockingQueuedConnection);
    thread_->quit();
    thread_->wait();
    delete worker_;
    delete thread_;
}

void WebDavCloudService::post(std::function<void(Worker&)> work) {
    QMetaObject::invokeMethod(
        worker_, [worker = worker_, work = std::move(work)] { work(*worker); },
        Qt::QueuedConnection);
}

void WebDavCloudService::testConnection(std::function<void(ConnectionCheck)> done) {
    post([done = std::move(done)](Worker& w) { w.testConnection(done); });
}

void WebDavCloudService::accountStatus(
    std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) {
    post([done = std::move(done)](Worker& w) {
        w.testConnection([done](ConnectionCheck check) {
            // A refused or missing account is an answer, not an error.
            if (check.status == CloudAccountStatus::couldNotDetermine) {
                done(check.status, std::move(check.error));
            } else {
                done(check.status, std::nullopt);
            }
        });
    });
}

void WebDavCloudService::fetchUserRecordId(
    std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) {
    post([done = std::move(done)](Worker& w) { w.fetchUserRecordId(done); });
}

void WebDavCloudService::fetchZone(
    const std::string& zoneName,
    std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) {
    post([zoneName, done = std::move(done)](Worker& w) { w.fetchZone(zoneName, done); });
}

void WebDavCloudService::saveZone(const std::string& zoneName,
                                  std::function<void(std::optional<CloudError>)> done) {
    post([zoneName, done = std::move(done)](Worker& w) { w.saveZone(zoneName, done); });
}

void WebDavCloudService::fetchRecord(
    const CloudRecordId& id,
    std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) {
    post([id, done = std::move(done)](Worker& w) { w.fetchRecord(id, done); });
}

void WebDavCloudService::saveRecord(const CloudRecord& record,
                                    std::function<void(std::optional<CloudError>)> done) {
    post([record, done = std::move(done)](Worker& w) { w.saveRecord(record, done); });
}

void WebDavCloudService::modifyRecords(std::vector<CloudRecord> toSave,
                                       std::vector<CloudRecordId> toDelete,
                                       std::function<void(std::optional<CloudError>)> done) {
    post([toSave = std::move(toSave), toDelete = std::move(toDelete),
          done = std::move(done)](Worker& w) { w.modifyRecords(toSave, toDelete, done); });
}

void WebDavCloudService::queryRecords(
    const std::string& recordType, std::optional<CloudQueryCursor> cursor, std::size_t limit,
    std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                       std::optional<CloudError>)>
        done) {
    post([recordType, cursor, limit, done = std::move(done)](Worker& w) {
        w.queryRecords(recordType, cursor, limit, done);
    });
}

void WebDavCloudService::setBeforeConditionalWriteForTesting(
    std::function<void(const CloudRecordId&, int)> hook) {
    post([hook = std::move(hook)](Worker& w) { w.setHook(hook); });
}

} // namespace tidemark
