// The operations of the private cloud database that backup, download and per-change sync need,
// as a platform service. The Linux service (platform/linux/WebDavCloudService) keeps the
// records on the user's own WebDAV server; tests may install another. Every operation returns at
// once; its completion runs later on a thread of the service (never inside the call), exactly
// once. Until a service is installed, the unavailable one answers every call with an error.
#pragma once

#include "records/eventInfo.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tidemark {

/// A typed value of a cloud record: text, integer (booleans are 1 and 0) or a byte blob.
using CloudValue = std::variant<std::string, std::int64_t, Bytes>;

struct CloudRecordId {
    std::string zoneName;   ///< "eventZone" or "memoZone"
    std::string recordName; ///< the store record's primary key

    bool operator==(const CloudRecordId&) const = default;
};

/// One record: its type, identifier and keys in writing order.
struct CloudRecord {
    std::string recordType;
    CloudRecordId id;
    std::vector<std::pair<std::string, CloudValue>> fields;

    bool operator==(const CloudRecord&) const = default;
    /// The value of `key`, if the record has it.
    const CloudValue* field(std::string_view key) const;
};

/// What went wrong, in words for a log or a terminal; `notFound` marks an absent record or zone.
struct CloudError {
    std::string message;
    bool notFound = false;
};

/// The account's state, with the numbers of the platform's account status.
enum class CloudAccountStatus : int {
    couldNotDetermine = 0,
    available = 1,
    restricted = 2,
    noAccount = 3,
    temporarilyUnavailable = 4,
};

/// Where a paged query goes on: the position in the listing of the type's records.
struct CloudQueryCursor {
    std::string recordType;
    std::size_t position = 0;

    bool operator==(const CloudQueryCursor&) const = default;
};

class CloudService {
public:
    virtual ~CloudService() = default;

    virtual void
    accountStatus(std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) = 0;
    /// The signed-in user's record name: a stable text per user.
    virtual void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) = 0;
    /// The zone's name when it exists, else nothing (with an error).
    virtual void
    fetchZone(const std::string& zoneName,
              std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) = 0;
    virtual void saveZone(const std::string& zoneName,
                          std::function<void(std::optional<CloudError>)> done) = 0;

    /// The record, or nothing with an error (`notFound` when there is none of that name).
    virtual void fetchRecord(
        const CloudRecordId& id,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) = 0;
    /// Writes the record whole (a new record).
    virtual void saveRecord(const CloudRecord& record,
                            std::function<void(std::optional<CloudError>)> done) = 0;
    /// Saves `toSave` with the changed-keys policy (the keys given replace those held, others
    /// stay) and deletes `toDelete`; one completion for the whole operation.
    virtual void modifyRecords(std::vector<CloudRecord> toSave, std::vector<CloudRecordId> toDelete,
                               std::function<void(std::optional<CloudError>)> done) = 0;
    /// One page of at most `limit` records of `recordType` from the start or from `cursor`, and
    /// the cursor of the next page when there is more.
    virtual void
    queryRecords(const std::string& recordType, std::optional<CloudQueryCursor> cursor,
                 std::size_t limit,
                 std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                    std::optional<CloudError>)>
                     done) = 0;
};

/// The installed service (never null).
CloudService& cloudService();
std::shared_ptr<CloudService> sharedCloudService();
void setCloudService(std::shared_ptr<CloudService> service);

/// Where the cloud logic runs its timed steps and main-thread work: the app's event loop. The
/// default one runs `work` on a detached thread after the delay (for programs without a loop).
class MainQueue {
public:
    virtual ~MainQueue() = default;
    virtual void async(std::function<void()> work) = 0;
    virtual void asyncAfter(double seconds, std::function<void()> work) = 0;
};

MainQueue& mainQueue();
void setMainQueue(std::shared_ptr<MainQueue> queue);

} // namespace tidemark
