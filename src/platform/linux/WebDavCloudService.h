// The private cloud database on the user's own WebDAV server (Nextcloud, ownCloud, Apache
// mod_dav, ...). Under the account's address, the folder "iCloud.mh.tideMark" is the container;
// its collections eventZone/ and memoZone/ are the zones; a record is the file
// <recordName>.json in its zone, with its type and typed fields.
//
// Saves with the changed-keys policy read the record, merge the keys and write it back on
// condition that nobody changed it meanwhile (If-Match on a strong ETag; a weak one proves
// nothing, and the write then goes unconditionally); a 412 reads again, at most twice more.
//
// All network work runs on a thread of the service's own with its QNetworkAccessManager, so that
// any thread may call, a blocking one included; completions run there, never inside the call.
// Every request gives up after the timeout without progress, and a dropped connection is an
// error: the service never hangs. Certificates are verified; an untrusted one is refused with its
// SHA-256 fingerprint in the message, unless it is the one pinned in the account.
#pragma once

#include "cloud/CloudService.h"
#include "platform/linux/CloudAccount.h"

#include <QString>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QThread;

namespace tidemark {

inline constexpr const char* kCloudContainerName = "iCloud.mh.tideMark";

class WebDavCloudService final : public CloudService {
public:
    /// Uses the account kept in `settings`; a request that makes no progress for `timeout`
    /// fails. A QCoreApplication must exist.
    explicit WebDavCloudService(DefaultsSuite& settings = DefaultsSuite::standard(),
                                std::chrono::milliseconds timeout = std::chrono::seconds(30));
    /// Fails what is still running (each completion with an error) and stops the thread.
    ~WebDavCloudService() override;
    WebDavCloudService(const WebDavCloudService&) = delete;
    WebDavCloudService& operator=(const WebDavCloudService&) = delete;

    /// What the account page needs to know about the server.
    struct ConnectionCheck {
        CloudAccountStatus status = CloudAccountStatus::couldNotDetermine;
        /// Why the status isn't `available`, in words; nothing when it is.
        std::optional<CloudError> error;
        /// The SHA-256 fingerprint of the server's certificate when it was refused as untrusted:
        /// CloudAccount::pinCertificate with it accepts that certificate from then on.
        QString untrustedCertificate;
    };
    /// Asks the server as accountStatus does, and says more about a refusal.
    void testConnection(std::function<void(ConnectionCheck)> done);

    // CloudService
    void
    accountStatus(std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) override;
    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override;
    void fetchZone(
        const std::string& zoneName,
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override;
    void saveZone(const std::string& zoneName,
                  std::function<void(std::optional<CloudError>)> done) override;
    void fetchRecord(
        const CloudRecordId& id,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) override;
    void saveRecord(const CloudRecord& record,
                    std::function<void(std::optional<CloudError>)> done) override;
    void modifyRecords(std::vector<CloudRecord> toSave, std::vector<CloudRecordId> toDelete,
                       std::function<void(std::optional<CloudError>)> done) override;
    void queryRecords(const std::string& recordType, std::optional<CloudQueryCursor> cursor,
                      std::size_t limit,
                      std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                         std::optional<CloudError>)>
                          done) override;

    /// Runs on the service's thread after a changed-keys save has read a record and before it
    /// writes it back on condition, with the attempt (0, then 1 and 2 after a 412): the moment a
    /// change from elsewhere makes the write fail. For tests.
    void setBeforeConditionalWriteForTesting(
        std::function<void(const CloudRecordId&, int attempt)> hook);

    class Worker;

private:
    void post(std::function<void(Worker&)> work);

    QThread* thread_;
    Worker* worker_;
};

} // namespace tidemark
