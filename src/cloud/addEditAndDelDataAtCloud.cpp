#include "cloud/addEditAndDelDataAtCloud.h"

#include "base/Fatal.h"
#include "calendar/Calendar.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tidemark {

struct CloudUpload::State {
    std::mutex mutex;
    std::condition_variable answered;
    std::size_t pending = 0;
    CloudUploadOutcome outcome;
};

CloudUploadOutcome CloudUpload::wait() const {
    if (!state_) {
        return {};
    }
    std::unique_lock lock(state_->mutex);
    state_->answered.wait(lock, [&] { return state_->pending == 0; });
    return state_->outcome;
}

namespace {

std::string presentTimeString() {
    return Calendar::current().format(now(), "yyyy-MM-dd HH:mm:ss");
}

void markSynced() {
    addEditAndDelDataAtCloud().lastSyncTimeStringForiCloudDataTask.set(presentTimeString());
}

/// Saves the record whole when the cloud has none of its name, or its keys over the held ones
/// when it has; the fetched record only decides which.
void saveRecordAtCloud(CloudRecord record) {
    auto service = sharedCloudService();
    const CloudRecordId id = record.id;
    service->fetchRecord(
        id, [service, record = std::move(record)](std::optional<CloudRecord> held,
                                                  std::optional<CloudError> error) mutable {
            if (!held && error) {
                service->saveRecord(record, [](std::optional<CloudError> saveError) {
                    if (!saveError) {
                        markSynced();
                    }
                });
            } else if (held && !error) {
                service->modifyRecords({std::move(record)}, {}, [](std::optional<CloudError>) {});
                markSynced();
            }
        });
}

void deleteRecordAtCloud(CloudRecordId id) {
    cloudService().modifyRecords({}, {std::move(id)}, [](std::optional<CloudError>) {});
    markSynced();
}

/// Sends one kind of record in batches: full batches, each followed by the pause, then the rest,
/// which is an empty batch when the count is a multiple of the batch size.
template <class Record> class BatchUpload {
public:
    CloudService& service;
    std::shared_ptr<CloudUpload::State> state;
    const std::function<void(std::chrono::milliseconds)>& pause;
    const CloudProgressHandler& progress;
    CloudProgress& sent;

    void send(const std::vector<Record>& records) {
        if (records.empty()) {
            return;
        }
        const std::size_t count = records.size();
        const std::size_t fullBatches = count / kCloudUploadBatchSize;
        for (std::size_t i = 0; i <= fullBatches; ++i) {
            const std::size_t begin = i * kCloudUploadBatchSize;
            const std::size_t end = i < fullBatches ? begin + kCloudUploadBatchSize : count;
            std::vector<CloudRecord> batch;
            batch.reserve(end - begin);
            for (std::size_t j = begin; j < end; ++j) {
                batch.push_back(cloudRecordOf(records[j]));
            }
            add(std::move(batch));
            if (i < fullBatches) {
                pause(kCloudPauseAfterFullBatch);
            }
        }
    }

private:
    void add(std::vector<CloudRecord> batch) {
        const std::size_t size = batch.size();
        {
            std::lock_guard lock(state->mutex);
            ++state->pending;
        }
        service.modifyRecords(std::move(batch), {},
                              [shared = state, size](std::optional<CloudError> error) {
                                  std::lock_guard lock(shared->mutex);
                                  if (!error) {
                                      shared->outcome.recordsWritten += size;
                                  } else if (!shared->outcome.firstError) {
                                      shared->outcome.firstError = std::move(error);
                                  }
                                  --shared->pending;
                                  shared->answered.notify_all();
                              });
        sent.done += size;
        if (progress) {
            progress(sent);
        }
    }
};

/// One download: the pages of one record type, each page written by `store`.
struct Download {
    std::shared_ptr<CloudService> service;
    std::string recordType;
    std::function<void(const std::vector<CloudRecord>&)> store;
    bool endsTheLoadingState = false;
    CloudProgressHandler progress;
    CloudProgress counted;
};

void requestPage(std::shared_ptr<Download> download, std::optional<CloudQueryCursor> cursor) {
    auto& service = *download->service;
    const std::string recordType = download->recordType;
    service.queryRecords(
        recordType, std::move(cursor), kCloudDownloadPageSize,
        [download = std::move(download)](std::vector<CloudRecord> records,
                                         std::optional<CloudQueryCursor> next,
                                         std::optional<CloudError> error) {
            if (error) {
                fatalStop(kNilMessage);
            }
            download->counted.total += records.size();
            download->store(records);
            download->counted.done += records.size();
            if (next) {
                if (download->progress) {
                    download->progress(download->counted);
                }
                requestPage(download, std::move(next));
                return;
            }
            if (download->endsTheLoadingState) {
                addEditAndDelDataAtCloud().loadingViewToggleForCloudkitPageDownloadButton.set(
                    false);
            }
            download->counted.finished = true;
            if (download->progress) {
                download->progress(download->counted);
            }
        });
}

} // namespace

void addEditAndDelDataAtCloud::sleepFor(std::chrono::milliseconds pause) {
    std::this_thread::sleep_for(pause);
}

void addEditAndDelDataAtCloud::deleteEventRecordAtCloud(const std::string& eventId) {
    deleteRecordAtCloud(eventRecordId(eventId));
}

void addEditAndDelDataAtCloud::saveEventRecordAtCloud(const eventInfo& event) {
    saveRecordAtCloud(cloudRecordOf(event));
}

void addEditAndDelDataAtCloud::deleteMemoRecordAtCloud(const std::string& memoId) {
    deleteRecordAtCloud(memoRecordId(memoId));
}

void addEditAndDelDataAtCloud::saveMemoRecordAtCloud(const memoDataForNotiObject& memo) {
    saveRecordAtCloud(cloudRecordOf(memo));
}

CloudUpload addEditAndDelDataAtCloud::uploadAllDataToCloud(CloudProgressHandler progress) {
    std::vector<eventInfo> events;
    std::vector<memoDataForNotiObject> memos;
    {
        const auto store = Store::open();
        events = store.objects<eventInfo>();
        memos = store.objects<memoDataForNotiObject>();
    }

    CloudUpload upload;
    upload.state_ = std::make_shared<CloudUpload::State>();
    const auto service = sharedCloudService();
    CloudProgress sent{0, events.size() + memos.size(), false};
    BatchUpload<eventInfo>{*service, upload.state_, pauseAfterFullBatch, progress, sent}.send(
        events);
    BatchUpload<memoDataForNotiObject>{*service, upload.state_, pauseAfterFullBatch, progress, sent}
        .send(memos);

    lastSyncTimeStringForiCloudDataTask.set(presentTimeString());
    loadingViewToggleForCloudkitPageBackupButton.set(false);
    sent.finished = true;
    if (progress) {
        progress(sent);
    }
    return upload;
}

void addEditAndDelDataAtCloud::downloadAllEventsFromCloud(CloudProgressHandler progress) {
    auto download = std::make_shared<Download>();
    download->service = sharedCloudService();
    download->recordType = std::string(kEventRecordType);
    download->store = [](const std::vector<CloudRecord>& records) {
        std::vector<eventObject> events;
        events.reserve(records.size());
        for (const auto& record : records) {
            events.push_back(eventObjectFromCloudRecord(record));
        }
        realmDataFunc().addEventsData(events);
    };
    download->endsTheLoadingState = true;
    download->progress = std::move(progress);
    requestPage(std::move(download), std::nullopt);
}

void addEditAndDelDataAtCloud::downloadAllMemosFromCloud(CloudProgressHandler progress) {
    auto download = std::make_shared<Download>();
    download->service = sharedCloudService();
    download->recordType = std::string(kMemoRecordType);
    download->store = [](const std::vector<CloudRecord>& records) {
        std::vector<memoDataForNotiObject> memos;
        memos.reserve(records.size());
        for (const auto& record : records) {
            memos.push_back(memoFromCloudRecord(record));
        }
        if (!memos.empty()) {
            auto store = Store::open();
            store.write([&] {
                for (const auto& memo : memos) {
                    store.add(memo);
                }
            });
        }
    };
    download->progress = std::move(progress);
    requestPage(std::move(download), std::nullopt);
}

void addEditAndDelDataAtCloud::saveDownloadedEventWithoutUpload(const eventObject& event) {
    auto store = Store::open();
    const auto record = eventAs<eventInfo>(event);
    store.write([&] { store.add(record); });
}

void addEditAndDelDataAtCloud::saveDownloadedMemoWithoutUpload(const memoDataForNotiObject& memo) {
    auto store = Store::open();
    store.write([&] { store.add(memo); });
}

} // namespace tidemark
