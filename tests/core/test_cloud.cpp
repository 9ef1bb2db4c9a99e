// The cloud logic against an in-memory cloud that answers on a thread of its own, with a main
// queue whose timed steps run when the test says: the account check's decisions, the record
// format, per-record sync, backup batches, and downloads merging into the store.
#include "RecordSupport.h"
#include "base/Fatal.h"
#include "cloud/CloudRecordMapping.h"
#include "cloud/addEditAndDelDataAtCloud.h"
#include "cloud/cloudKitFunc.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <future>
#include <gtest/gtest.h>
#include <map>
#include <mutex>
#include <ostream>
#include <set>
#include <thread>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

/// Records per zone in listing order; every answer comes later on the cloud's own thread.
class MemoryCloud final : public CloudService {
public:
    struct Failures {
        bool accountStatus = false, zoneFetch = false, recordFetch = false, recordSave = false;
        bool modify = false;
    };

    MemoryCloud() : worker_([this] { work(); }) {}
    ~MemoryCloud() override {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
            held_ = false;
        }
        wake_.notify_all();
        worker_.join();
    }

    // What the cloud is and what fails; set while it is idle.
    CloudAccountStatus status = CloudAccountStatus::available;
    std::string user = "alice";
    std::set<std::string> zones;
    std::map<std::string, std::vector<CloudRecord>> records; ///< by zone
    Failures fail;
    /// Every call as it was made, in words.
    std::vector<std::string> calls;
    // Read the above only while the cloud is idle or held.

    /// Answers nothing until released (a backup must not wait for its answers).
    void hold() { setHeld(true); }
    void release() { setHeld(false); }
    /// Returns once every answer asked for so far, and all that those asked for, has come.
    void waitIdle() {
        std::unique_lock lock(mutex_);
        idle_.wait(lock, [&] { return jobs_.empty() && !busy_; });
    }

    void accountStatus(
        std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) override {
        later("accountStatus", [this, done] { done(status, failure(fail.accountStatus)); });
    }
    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        later("fetchUserRecordId", [this, done] { done(user, std::nullopt); });
    }
    void fetchZone(
        const std::string& zone,
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        later("fetchZone " + zone, [this, zone, done] {
            if (fail.zoneFetch) {
                return done(std::nullopt, CloudError{"the server did not answer", false});
            }
            bool exists = false;
            {
                std::lock_guard lock(mutex_);
                exists = zones.count(zone) > 0;
            }
            exists ? done(zone, std::nullopt) : done(std::nullopt, CloudError{"no zone", true});
        });
    }
    void saveZone(const std::string& zone,
                  std::function<void(std::optional<CloudError>)> done) override {
        later("saveZone " + zone, [this, zone, done] {
            {
                std::lock_guard lock(mutex_);
                zones.insert(zone);
            }
            done(std::nullopt);
        });
    }
    void fetchRecord(
        const CloudRecordId& id,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) override {
        later("fetch " + id.zoneName + "/" + id.recordName, [this, id, done] {
            std::optional<CloudRecord> held;
            if (!fail.recordFetch) {
                std::lock_guard lock(mutex_);
                if (auto* r = find(id)) {
                    held = *r;
                }
            }
            held ? done(held, std::nullopt)
                 : done(std::nullopt, CloudError{"no record", !fail.recordFetch});
        });
    }
    void saveRecord(const CloudRecord& record,
                    std::function<void(std::optional<CloudError>)> done) override {
        later("save " + record.id.zoneName + "/" + record.id.recordName, [this, record, done] {
            if (!fail.recordSave) {
                std::lock_guard lock(mutex_);
                put(record);
            }
            done(failure(fail.recordSave));
        });
    }
    void modifyRecords(std::vector<CloudRecord> toSave, std::vector<CloudRecordId> toDelete,
                       std::function<void(std::optional<CloudError>)> done) override {
        std::string call = "modify " + std::to_string(toSave.size());
        if (!toSave.empty()) {
            call += " " + toSave.front().id.zoneName;
        }
        for (const auto& id : toDelete) {
            call += " delete " + id.zoneName + "/" + id.recordName;
        }
        later(call, [this, toSave, toDelete, done] {
            if (!fail.modify) {
                std::lock_guard lock(mutex_);
                for (const auto& r : toSave) {
                    put(r);
                }
                for (const auto& id : toDelete) {
                    std::erase_if(records[id.zoneName],
                                  [&](const CloudRecord& r) { return r.id == id; });
                }
            }
            done(failure(fail.modify));
        });
    }
    void queryRecords(const std::string& type, std::optional<CloudQueryCursor> cursor,
                      std::size_t limit,
                      std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                         std::optional<CloudError>)>
                          done) override {
        const std::size_t from = cursor ? cursor->position : 0;
        later("query " + type + " from " + std::to_string(from), [this, type, from, limit, done] {
            std::vector<CloudRecord> all;
            {
                std::lock_guard lock(mutex_);
                for (const auto& [zone, list] : records) {
                    for (const auto& r : list) {
                        if (r.recordType == type) {
                            all.push_back(r);
                        }
                    }
                }
            }
            const std::size_t to = std::min(all.size(), from + limit);
            std::vector<CloudRecord> page(all.begin() + static_cast<std::ptrdiff_t>(from),
                                          all.begin() + static_cast<std::ptrdiff_t>(to));
            std::optional<CloudQueryCursor> next;
            if (to < all.size()) {
                next = CloudQueryCursor{type, to};
            }
            done(std::move(page), next, std::nullopt);
        });
    }

private:
    static std::optional<CloudError> failure(bool failing) {
        return failing ? std::optional(CloudError{"refused", false}) : std::nullopt;
    }
    CloudRecord* find(const CloudRecordId& id) {
        for (auto& r : records[id.zoneName]) {
            if (r.id == id) {
                return &r;
            }
        }
        return nullptr;
    }
    void put(const CloudRecord& record) {
        if (auto* held = find(record.id)) {
            *held = record;
        } else {
            records[record.id.zoneName].push_back(record);
        }
    }
    void setHeld(bool held) {
        {
            std::lock_guard lock(mutex_);
            held_ = held;
        }
        wake_.notify_all();
    }
    void later(std::string call, std::function<void()> job) {
        {
            std::lock_guard lock(mutex_);
            calls.push_back(std::move(call));
            jobs_.push_back(std::move(job));
        }
        wake_.notify_all();
    }
    void work() {
        std::unique_lock lock(mutex_);
        for (;;) {
            wake_.wait(lock, [&] { return stopping_ || (!held_ && !jobs_.empty()); });
            if (stopping_ && jobs_.empty()) {
                return;
            }
            auto job = std::move(jobs_.front());
            jobs_.pop_front();
            busy_ = true;
            lock.unlock();
            job();
            lock.lock();
            busy_ = false;
            idle_.notify_all();
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_, idle_;
    std::deque<std::function<void()>> jobs_;
    bool busy_ = false, held_ = false, stopping_ = false;
    std::thread worker_;
};

/// A main queue on a pretend clock: work waits until the test runs the clock forward.
class ManualQueue final : public MainQueue {
public:
    void async(std::function<void()> work) override { add(0, std::move(work)); }
    void asyncAfter(double seconds, std::function<void()> work) override {
        {
            std::lock_guard lock(mutex_);
            delays.push_back(seconds);
        }
        add(seconds, std::move(work));
    }
    /// Moves the clock on by `seconds`, running what falls due in time order and letting the
    /// cloud answer everything before each step.
    void advance(double seconds, MemoryCloud& cloud) {
        double until = 0;
        {
            std::lock_guard lock(mutex_);
            until = clock_ + seconds;
        }
        for (;;) {
            cloud.waitIdle();
            std::unique_lock lock(mutex_);
            if (due_.empty() || due_.begin()->first > until) {
                clock_ = until;
                return;
            }
            auto work = std::move(due_.begin()->second);
            clock_ = due_.begin()->first;
            due_.erase(due_.begin());
            lock.unlock();
            work();
        }
    }
    std::vector<double> delays;

private:
    void add(double seconds, std::function<void()> work) {
        std::lock_guard lock(mutex_);
        due_.emplace(clock_ + seconds, std::move(work));
    }
    std::mutex mutex_;
    double clock_ = 0;
    std::multimap<double, std::function<void()>> due_;
};

class CloudTest : public ::testing::Test {
protected:
    void SetUp() override {
        setCloudService(cloud);
        setMainQueue(queue);
    }
    void TearDown() override {
        cloud->release();
        cloud->waitIdle();
        setCloudService(nullptr);
        setMainQueue(nullptr);
    }

    IsolatedStorage storage;
    ScopedCalendarEnvironment env{fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8)};
    std::shared_ptr<MemoryCloud> cloud = std::make_shared<MemoryCloud>();
    std::shared_ptr<ManualQueue> queue = std::make_shared<ManualQueue>();
};

using cloudKitFuncTest = CloudTest;
using cloudSyncTest = CloudTest;

constexpr const char* kNow = "2026-03-10 08:00:00";

std::vector<eventInfo> manyEvents(std::size_t n) {
    std::vector<eventInfo> events;
    for (std::size_t i = 0; i < n; ++i) {
        events.push_back(eventAs<eventInfo>(sampleEvent("E" + std::to_string(1000 + i))));
    }
    return events;
}

// ---------------------------------------------------------------------------------------------
// The account check

/// What the check leaves in the settings.
struct CheckState {
    bool on = false;
    std::string code;
    bool account = false, idChanged = false;
    std::string adopted;
    bool zonesKnown = false;
    bool operator==(const CheckState&) const = default;
};
std::ostream& operator<<(std::ostream& os, const CheckState& s) {
    return os << "{on " << s.on << ", code \"" << s.code << "\", account " << s.account
              << ", idChanged " << s.idChanged << ", adopted \"" << s.adopted << "\", zones "
              << s.zonesKnown << "}";
}
CheckState checkState() {
    cloudKitFunc c;
    return {c.cloudkitFuncStatus.get(),
            c.errorStringForiCloudDataTask.get(),
            c.userCloudAccStatus.get(),
            c.cloudFuncNotActiveBecauseIdChanged.get(),
            c.userIdInfoAtThisDevice.get(),
            c.eventZoneStatuAtThisDevice.get() && c.memoZoneStatuAtThisDevice.get()};
}

struct CheckCase {
    std::string name;
    CloudAccountStatus status;
    std::string user;
    bool zonesExist;
    MemoryCloud::Failures fail;
    CheckState before;
    std::vector<std::pair<bool, CheckState>> rounds; ///< the switch at the start, the state after
};

TEST_F(cloudKitFuncTest, CheckDecidesWhetherTheCloudFunctionMayRun) {
    const CheckState healthy{true, "", true, false, "alice", true};
    using enum CloudAccountStatus;
    const CheckState off{false, "", true, false, "alice", false};
    // clang-format off
    const std::vector<CheckCase> cases = {
        {"signed out", noAccount, "alice", true, {}, healthy,
         {{true, {false, "1003", false, false, "alice", true}}}},
        {"another account: switched off, the adopted one stays", available, "bob", true, {}, healthy,
         {{true, {false, "1018", true, true, "alice", true}}}},
        {"new device: zones made too late for the first check, found by the second", available,
         "alice", false, {}, {},
         {{true, {false, "1100", true, false, "alice", true}},
          {true, healthy}}},
        {"zone fetch failing for another reason still saves the zones", available, "alice", true,
         {.zoneFetch = true}, off,
         {{false, {false, "", true, false, "alice", true}}}},
        {"an unanswered status leaves the last known account", available, "alice", true,
         {.accountStatus = true}, healthy,
         {{true, {true, "1000", true, false, "alice", true}}}},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        IsolatedStorage fresh;
        cloud->status = c.status;
        cloud->user = c.user;
        cloud->zones =
            c.zonesExist ? std::set<std::string>{"eventZone", "memoZone"} : std::set<std::string>{};
        cloud->fail = c.fail;
        cloudKitFunc settings;
        settings.userCloudAccStatus.set(c.before.account);
        settings.userIdInfoAtThisDevice.set(c.before.adopted);
        settings.eventZoneStatuAtThisDevice.set(c.before.zonesKnown);
        settings.memoZoneStatuAtThisDevice.set(c.before.zonesKnown);
        for (const auto& [switchOn, expected] : c.rounds) {
            settings.cloudkitFuncStatus.set(switchOn);
            queue->delays.clear();
            cloudKitFunc().checkCloudAccountAndZones();
            queue->advance(10, *cloud);
            EXPECT_EQ(checkState(), expected);
            EXPECT_EQ(queue->delays, (std::vector<double>{1.28, 2.3}));
        }
    }
}

// ---------------------------------------------------------------------------------------------
// The record format

TEST(cloudRecordMapping, EventsAndMemosKeepEveryKeyInWritingOrder) {
    auto event = sampleEvent("E1");
    const auto record = cloudRecordOf(event);
    EXPECT_EQ(record.recordType, "eventInfo");
    EXPECT_EQ(record.id, (CloudRecordId{"eventZone", "E1"}));
    std::string keys;
    for (const auto& [key, value] : record.fields) {
        keys += key + " ";
    }
    EXPECT_EQ(keys, "eventTitle eventContent timeStampGenerate eventStartDateYear "
                    "eventStartDateMonth eventStartDateDay eventRepeatOrNot eventType "
                    "eventDateWhenEveryDayHour eventDateWhenEveryDayMin eventDateWhenEveryWeek "
                    "eventDateWhenEveryMonth eventHaveCustomizeInterval "
                    "eventDateWhenCustomizeRepeatTimes eventNotiOrNot eventNotiType "
                    "eventNotiDateDayHour eventNotiDateDayMin eventNotiId eventShareOrNot "
                    "eventShareGroupId eventHaveEndDateOrNot eventEndDateYear eventEndDateMonth "
                    "eventEndDateDay eventStarOrNot eventHaveMemoOrNot eventColorString "
                    "backupDataType01 backupDataType02 backupDataType03 ");
    EXPECT_EQ(*record.field("eventRepeatOrNot"), CloudValue(std::int64_t{1}));
    EXPECT_EQ(*record.field("eventNotiOrNot"), CloudValue(std::int64_t{0}));
    EXPECT_EQ(*record.field("eventDateWhenEveryWeek"), CloudValue(Bytes{}));
    EXPECT_EQ(eventObjectFromCloudRecord(record), event);
    EXPECT_EQ(decodeCloudRecordJson(encodeCloudRecordJson(record), "eventZone"), record);

    // Only exactly 1 is true.
    auto two = record;
    for (auto& [key, value] : two.fields) {
        if (key == "eventStarOrNot") {
            value = std::int64_t{2};
        }
    }
    event.eventStarOrNot = false;
    EXPECT_EQ(eventObjectFromCloudRecord(two), event);

    // The memo's name is its memoId; its "eventId" is the owning event's.
    const auto memo = sampleMemo("M1", "Title");
    const auto memoRecord = cloudRecordOf(memo);
    EXPECT_EQ(memoRecord.id, (CloudRecordId{"memoZone", "M1"}));
    EXPECT_EQ(encodeCloudRecordJson(memoRecord),
              R"({"recordType":"memoDataForNotiObject","recordName":"M1","fields":{)"
              R"("eventId":{"type":"string","value":"E1"},)"
              R"("timeStamp":{"type":"string","value":"2026-03-10 / 08:00"},)"
              R"("title":{"type":"string","value":"Title"},)"
              R"("content":{"type":"string","value":"Body"},)"
              R"("backupDataType01":{"type":"int64","value":0},)"
              R"("backupDataType02":{"type":"string","value":""},)"
              R"("backupDataType03":{"type":"string","value":""}}})");
    EXPECT_EQ(memoFromCloudRecord(memoRecord), memo);
}

TEST(cloudRecordMapping, MalformedJsonIsRefusedWithItsReason) {
    const auto withField = [](const std::string& entry) {
        return R"({"recordType":"eventInfo","recordName":"E1","fields":{"k":)" + entry + "}}";
    };
    const auto good =
        decodeCloudRecordJson(withField(R"({"type":"bytes","value":"AQI="})"), "memoZone");
    ASSERT_TRUE(good.has_value());
    EXPECT_EQ(good->id, (CloudRecordId{"memoZone", "E1"}));
    EXPECT_EQ(*good->field("k"), CloudValue(Bytes{1, 2}));

    struct Case {
        std::string text, reason;
    };
    for (const auto& c : std::vector<Case>{
             {"", "not valid JSON"},
             {"1e999", "not valid JSON"},
             {"[]", "not a JSON object"},
             {R"({"recordName":"E1","fields":{}})", "\"recordType\""},
             {R"({"recordType":"eventInfo","recordName":"","fields":{}})", "\"recordName\""},
             {R"({"recordType":"eventInfo","recordName":"E1","fields":[]})", "\"fields\""},
             {withField("5"), "field \"k\" is not an object"},
             {withField(R"({"value":1})"), "\"type\""},
             {withField(R"({"type":"int64"})"), "\"value\""},
             {withField(R"({"type":"float","value":1})"), "unknown type"},
             {withField(R"({"type":"int64","value":1.5})"), "not an integer"},
             {withField(R"({"type":"int64","value":9223372036854775808})"), "out of range"},
             {withField(R"({"type":"string","value":1})"), "not a string"},
             {withField(R"({"type":"bytes","value":"AQI"})"), "Base64"},
         }) {
        SCOPED_TRACE(c.text);
        JsonDecodeError error;
        EXPECT_EQ(decodeCloudRecordJson(c.text, "eventZone", &error), std::nullopt);
        EXPECT_NE(error.message.find(c.reason), std::string::npos) << error.message;
    }
}

TEST(cloudRecordMappingDeathTest, AMissingOrIllKindedKeyStops) {
    const auto record = cloudRecordOf(sampleEvent("E1"));
    auto missing = record;
    missing.fields.pop_back();
    auto illKinded = record;
    illKinded.fields[7].second = std::string("3"); // eventType
    EXPECT_DEATH(eventObjectFromCloudRecord(missing), std::string(kNilMessage));
    EXPECT_DEATH(eventObjectFromCloudRecord(illKinded), std::string(kNilMessage));
}

// ---------------------------------------------------------------------------------------------
// Per-record sync

TEST_F(cloudSyncTest, OneRecordIsSavedNewOrMergedAndDeletionsCountAsSyncedAtOnce) {
    const auto event = eventAs<eventInfo>(sampleEvent("A", "New title"));
    const auto save = [&] { addEditAndDelDataAtCloud().saveEventRecordAtCloud(event); };
    struct Case {
        std::string name;
        bool held;
        MemoryCloud::Failures fail;
        std::function<void()> act;
        std::vector<std::string> calls;
        std::string lastSync;
        std::string titleInCloud; ///< "" for no record
    };
    const auto remove = [&] { addEditAndDelDataAtCloud().deleteEventRecordAtCloud("A"); };
    const std::vector<std::string> saved{"fetch eventZone/A", "save eventZone/A"};
    // clang-format off
    const std::vector<Case> cases = {
        {"new record", false, {}, save, saved, kNow, "New title"},
        {"new record whose save fails", false, {.recordSave = true}, save, saved, "", ""},
        {"held record: its keys are replaced", true, {}, save,
         {"fetch eventZone/A", "modify 1 eventZone"}, kNow, "New title"},
        {"fetch failing for another reason saves", true, {.recordFetch = true}, save, saved, kNow,
         "New title"},
        {"failing delete", true, {.modify = true}, remove, {"modify 0 delete eventZone/A"}, kNow,
         "Old title"},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        IsolatedStorage fresh;
        cloud->records.clear();
        cloud->calls.clear();
        cloud->fail = c.fail;
        if (c.held) {
            cloud->records["eventZone"] = {cloudRecordOf(sampleEvent("A", "Old title"))};
        }
        c.act();
        cloud->waitIdle();
        EXPECT_EQ(cloud->calls, c.calls);
        EXPECT_EQ(addEditAndDelDataAtCloud().lastSyncTimeStringForiCloudDataTask.get(), c.lastSync);
        ASSERT_EQ(cloud->records["eventZone"].size(), c.titleInCloud.empty() ? 0u : 1u);
        if (!c.titleInCloud.empty()) {
            const auto& inCloud = cloud->records["eventZone"][0];
            EXPECT_EQ(eventObjectFromCloudRecord(inCloud).eventTitle, c.titleInCloud);
        }
    }
}

// ---------------------------------------------------------------------------------------------
// Backup

TEST_F(cloudSyncTest, BackupSendsBatchesOf390WithoutWaitingForThem) {
    struct Case {
        std::size_t events, memos;
        bool failing;
        std::vector<std::string> batches;
        std::size_t pauses;
    };
    // clang-format off
    const std::vector<Case> cases = {
        {0, 0, false, {}, 0},
        {390, 0, false, {"modify 390 eventZone", "modify 0"}, 1},
        {391, 2, false, {"modify 390 eventZone", "modify 1 eventZone", "modify 2 memoZone"}, 1},
        {780, 1, true, {"modify 390 eventZone", "modify 390 eventZone", "modify 0",
                        "modify 1 memoZone"}, 2},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.events) + " events, " + std::to_string(c.memos) + " memos");
        IsolatedStorage fresh;
        cloud->records.clear();
        cloud->calls.clear();
        cloud->fail = {.modify = c.failing};
        storeAll(manyEvents(c.events));
        std::vector<memoDataForNotiObject> memos;
        for (std::size_t i = 0; i < c.memos; ++i) {
            memos.push_back(sampleMemo("M" + std::to_string(i), "memo"));
        }
        storeAll(memos);

        addEditAndDelDataAtCloud cloudSync;
        cloudSync.loadingViewToggleForCloudkitPageBackupButton.set(true);
        std::vector<std::chrono::milliseconds> pauses;
        cloudSync.pauseAfterFullBatch = [&](std::chrono::milliseconds p) { pauses.push_back(p); };
        std::vector<CloudProgress> reports;
        cloud->hold();
        const auto upload =
            cloudSync.uploadAllDataToCloud([&](const CloudProgress& p) { reports.push_back(p); });

        // Everything is handed out and the page's state is final before any answer.
        EXPECT_EQ(cloud->calls, c.batches);
        EXPECT_EQ(pauses,
                  std::vector<std::chrono::milliseconds>(c.pauses, kCloudPauseAfterFullBatch));
        EXPECT_EQ(cloudSync.lastSyncTimeStringForiCloudDataTask.get(), kNow);
        EXPECT_FALSE(cloudSync.loadingViewToggleForCloudkitPageBackupButton.get());
        const std::size_t total = c.events + c.memos;
        ASSERT_EQ(reports.size(), c.batches.size() + 1);
        EXPECT_TRUE(reports.back().finished);
        EXPECT_EQ(reports.back().done, total);
        EXPECT_EQ(reports.back().total, total);

        auto outcome = std::async(std::launch::async, [&] { return upload.wait(); });
        if (!c.batches.empty()) {
            EXPECT_EQ(outcome.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
        }
        cloud->release();
        const auto answered = outcome.get();
        EXPECT_EQ(answered.recordsWritten, c.failing ? 0 : total);
        EXPECT_EQ(answered.firstError.has_value(), c.failing);
        EXPECT_EQ(cloud->records["eventZone"].size(), c.failing ? 0 : c.events);
    }
}

// ---------------------------------------------------------------------------------------------
// Download

TEST_F(cloudSyncTest, EventDownloadPagesThroughTheCloudAndUpsertsThroughTheStore) {
    std::vector<CloudRecord> inCloud;
    for (const auto& e : manyEvents(450)) {
        inCloud.push_back(cloudRecordOf(e));
    }
    cloud->records["eventZone"] = inCloud;
    storeAll(std::vector<eventInfo>{eventAs<eventInfo>(sampleEvent("E1007", "Local title")),
                                    eventAs<eventInfo>(sampleEvent("Local only"))});
    addEditAndDelDataAtCloud cloudSync;
    cloudSync.loadingViewToggleForCloudkitPageDownloadButton.set(true);
    Setting<bool>("ALL_APP_cloudkitFuncStatus", false).set(true);

    std::vector<CloudProgress> reports;
    std::mutex reportsLock;
    cloudSync.downloadAllEventsFromCloud([&](const CloudProgress& p) {
        std::lock_guard lock(reportsLock);
        reports.push_back(p);
    });
    cloud->waitIdle();

    std::vector<std::string> queries, fetches;
    for (const auto& call : cloud->calls) {
        (call.starts_with("query") ? queries : fetches).push_back(call);
    }
    EXPECT_EQ(queries,
              (std::vector<std::string>{"query eventInfo from 0", "query eventInfo from 200",
                                        "query eventInfo from 400"}));
    // With the function on, every downloaded event goes back up.
    EXPECT_EQ(std::count_if(fetches.begin(), fetches.end(),
                            [](const std::string& c) { return c.starts_with("fetch eventZone/"); }),
              450);

    const auto events = Store::open().objects<eventInfo>();
    ASSERT_EQ(events.size(), 451u);
    EXPECT_EQ(events[0].eventId, "E1007");
    EXPECT_EQ(events[0].eventTitle, "Title");
    EXPECT_EQ(events[1].eventId, "Local only");
    EXPECT_FALSE(cloudSync.loadingViewToggleForCloudkitPageDownloadButton.get());
    ASSERT_FALSE(reports.empty());
    EXPECT_TRUE(reports.back().finished);
    EXPECT_EQ(reports.back().done, 450u);
}

TEST_F(cloudSyncTest, MemoDownloadWritesStraightIntoTheStoreAndTheLaterCopyWins) {
    cloud->records["memoZone"] = {cloudRecordOf(sampleMemo("M1", "first")),
                                  cloudRecordOf(sampleMemo("M2", "other")),
                                  cloudRecordOf(sampleMemo("M1", "second"))};
    storeAll(std::vector<memoDataForNotiObject>{sampleMemo("Local", "kept")});
    addEditAndDelDataAtCloud cloudSync;
    cloudSync.loadingViewToggleForCloudkitPageDownloadButton.set(true);
    Setting<bool>("ALL_APP_cloudkitFuncStatus", false).set(true);

    cloudSync.downloadAllMemosFromCloud();
    cloud->waitIdle();

    EXPECT_EQ(cloud->calls, (std::vector<std::string>{"query memoDataForNotiObject from 0"}));
    const auto memos = Store::open().objects<memoDataForNotiObject>();
    ASSERT_EQ(memos.size(), 3u);
    EXPECT_EQ(memos[1], sampleMemo("M1", "second"));
    // The event download ends the loading state, not this one.
    EXPECT_TRUE(cloudSync.loadingViewToggleForCloudkitPageDownloadButton.get());
}

} // namespace
