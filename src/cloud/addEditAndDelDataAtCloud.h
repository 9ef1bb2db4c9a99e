// Moves records between the store and the private cloud database. There is no change tracking and
// no merge: one record goes up right after each store change while the cloud function is on, a
// backup writes every record in batches, a download upserts every cloud record into the store
// (the cloud wins for records in both places, records only in the store stay, nothing is
// removed). Deletions reach the cloud only through the per-change path.
#pragma once

#include "cloud/CloudRecordMapping.h"
#include "cloud/CloudService.h"
#include "records/Defaults.h"
#include "records/eventInfo.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// Records in one backup batch; the thread pauses after each full batch.
inline constexpr std::size_t kCloudUploadBatchSize = 390;
inline constexpr std::chrono::milliseconds kCloudPauseAfterFullBatch{1000};
/// Records asked for per download page.
inline constexpr std::size_t kCloudDownloadPageSize = 200;

/// How far a backup or a download has come. A backup counts records handed to the cloud out of
/// all it will send; a download counts records written to the store out of those received so
/// far, which is the final total only with the last page. `finished` is set on the last report.
struct CloudProgress {
    std::size_t done = 0;
    std::size_t total = 0;
    bool finished = false;
};
using CloudProgressHandler = std::function<void(const CloudProgress&)>;

/// What the operations of one backup answered.
struct CloudUploadOutcome {
    std::size_t recordsWritten = 0;       ///< records of the batches that answered without error
    std::optional<CloudError> firstError; ///< the first error a batch answered with
};

/// The operations that one backup added. A backup itself never waits for them; a caller that
/// must know how it went (a command without a window) waits here.
class CloudUpload {
public:
    /// Blocks until every operation of the backup has answered.
    CloudUploadOutcome wait() const;

    struct State; ///< what the operations' completions count (defined with the backup)

private:
    friend class addEditAndDelDataAtCloud;
    std::shared_ptr<State> state_;
};

class addEditAndDelDataAtCloud {
public:
    Setting<bool> loadingViewToggleForCloudkitPageBackupButton{
        "APP_CLOUDKITPAGE_loadingViewToggleForCloudkitPageBackupButton", false};
    Setting<bool> loadingViewToggleForCloudkitPageDownloadButton{
        "APP_CLOUDKITPAGE_loadingViewToggleForCloudkitPageDownloadButton", false};
    /// Local time of the last write, "yyyy-MM-dd HH:mm:ss".
    Setting<std::string> lastSyncTimeStringForiCloudDataTask{
        "FUNC_CLOUD_lastSyncTimeStringForiCloudDataTask", ""};
    /// Local time of the last manual backup, "yyyy-MM-dd HH:mm:ss" (the cloud page sets it).
    Setting<std::string> lastManuallyBackupTimeStringForiCloudDataTask{
        "FUNC_CLOUD_lastManuallyBackupTimeStringForiCloudDataTask", ""};
    Setting<bool> allPageLoadingViewToggleValue{"FUNC_APP_allPageLoadingViewToggleValue", false};

    /// How a backup pauses after a full batch; a blocking sleep unless replaced (tests count).
    std::function<void(std::chrono::milliseconds)> pauseAfterFullBatch =
        [](std::chrono::milliseconds pause) { sleepFor(pause); };

    /// Deletes the event's record; the sync time moves at once, whatever the outcome.
    void deleteEventRecordAtCloud(const std::string& eventId);
    /// Writes the event's record: a new record when the cloud has none, else its keys over those
    /// held (the last writer wins, key by key). Started, not awaited.
    void saveEventRecordAtCloud(const eventInfo& event);
    void deleteMemoRecordAtCloud(const std::string& memoId);
    void saveMemoRecordAtCloud(const memoDataForNotiObject& memo);

    /// Writes every event, then every memo, in batches of 390 on the calling thread, pausing
    /// after each full batch; a kind with records always ends with a (possibly empty) last
    /// batch. The sync time and the backup's loading flag are set as soon as the operations are
    /// added: nothing here waits for them, but the returned handle can. `progress` is called on
    /// the calling thread.
    CloudUpload uploadAllDataToCloud(CloudProgressHandler progress = {});
    /// Reads every event of the cloud in pages of 200 and adds each through the store's
    /// maintenance, which sends it back while the cloud function is on (a page's events in one
    /// transaction, with one widget publication after them); clears the download's
    /// loading flag after the last page. An error from the cloud, or a record that can't be
    /// read, is a fatal stop. Returns at once; `progress` is called on the service's threads.
    void downloadAllEventsFromCloud(CloudProgressHandler progress = {});
    /// The same for memos, written straight into the store with no cloud step (a page in one
    /// transaction); the loading flag is left to the event download.
    void downloadAllMemosFromCloud(CloudProgressHandler progress = {});
    /// Store writes with no cloud step and no publication.
    void saveDownloadedEventWithoutUpload(const eventObject& event);
    void saveDownloadedMemoWithoutUpload(const memoDataForNotiObject& memo);

private:
    static void sleepFor(std::chrono::milliseconds pause);
};

} // namespace tidemark
