// The cloud logic that only a fake cloud can drive: the account check's decisions, taken on a
// main queue whose timed steps run when the test says, and the record format. Backup, restore
// and per-change sync run against a real server in the window-side loopback tests.
#include "QuietCloudService.h"
#include "RecordSupport.h"
#include "base/Fatal.h"
#include "cloud/CloudRecordMapping.h"
#include "cloud/cloudKitFunc.h"

#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <set>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

/// An account and its zones whose answers wait until the test lets the cloud answer, as a
/// real cloud answers later on a thread of its own.
class AccountCloud final : public QuietCloudService {
public:
    struct Failures {
        bool accountStatus = false, zoneFetch = false;
    };
    CloudAccountStatus status = CloudAccountStatus::available;
    std::string user = "alice";
    std::set<std::string> zones;
    Failures fail;

    void accountStatus(
        std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) override {
        later([this, done] {
            done(status,
                 fail.accountStatus ? std::optional(CloudError{"refused", false}) : std::nullopt);
        });
    }
    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        later([this, done] { done(user, std::nullopt); });
    }
    void fetchZone(
        const std::string& zone,
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        later([this, zone, done] {
            if (fail.zoneFetch) {
                return done(std::nullopt, CloudError{"the server did not answer", false});
            }
            zones.count(zone) ? done(zone, std::nullopt)
                              : done(std::nullopt, CloudError{"no zone", true});
        });
    }
    void saveZone(const std::string& zone,
                  std::function<void(std::optional<CloudError>)> done) override {
        later([this, zone, done] {
            zones.insert(zone);
            done(std::nullopt);
        });
    }
    /// Gives every answer asked for so far, and those the answers ask for.
    void answerAll() {
        while (!pending_.empty()) {
            auto job = std::move(pending_.front());
            pending_.pop_front();
            job();
        }
    }

private:
    void later(std::function<void()> job) { pending_.push_back(std::move(job)); }
    std::deque<std::function<void()>> pending_;
};

/// A main queue on a pretend clock: work waits until the test runs the clock forward.
class ManualQueue final : public MainQueue {
public:
    void async(std::function<void()> work) override { due_.emplace(clock_, std::move(work)); }
    void asyncAfter(double seconds, std::function<void()> work) override {
        delays.push_back(seconds);
        due_.emplace(clock_ + seconds, std::move(work));
    }
    /// Moves the clock on by `seconds`, running what falls due in time order and letting the
    /// cloud answer everything before each step.
    void advance(double seconds, AccountCloud& cloud) {
        const double until = clock_ + seconds;
        for (cloud.answerAll(); !due_.empty() && due_.begin()->first <= until; cloud.answerAll()) {
            auto work = std::move(due_.begin()->second);
            clock_ = due_.begin()->first;
            due_.erase(due_.begin());
            work();
        }
        clock_ = until;
    }
    std::vector<double> delays;

private:
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
        setCloudService(nullptr);
        setMainQueue(nullptr);
    }

    IsolatedStorage storage;
    ScopedCalendarEnvironment env{fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8)};
    std::shared_ptr<AccountCloud> cloud = std::make_shared<AccountCloud>();
    std::shared_ptr<ManualQueue> queue = std::make_shared<ManualQueue>();
};

using cloudKitFuncTest = CloudTest;

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
    AccountCloud::Failures fail;
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

} // namespace
