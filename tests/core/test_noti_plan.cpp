// Reminder planning: lead times, the order of the plan, the cap of 60 taken before the past
// reminders are left out, identifiers, and the master switch.
#include "RecordSupport.h"
#include "notifications/NotificationCenter.h"
#include "notifications/notiFunc.h"

#include <gtest/gtest.h>
#include <memory>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

class RecordingCenter final : public NotificationCenter {
public:
    std::vector<NotificationRequest> added; ///< the requests of the last planning run
    void requestAuthorization(std::function<void(bool, std::optional<std::string>)>) override {}
    void authorizationStatus(std::function<void(AuthorizationStatus)>) override {}
    void add(const NotificationRequest& r,
             std::function<void(std::optional<std::string>)>) override {
        added.push_back(r);
    }
    void removePending(const std::vector<std::string>&) override {}
    void removeAllPending() override { added.clear(); }
    void replacePending(const std::function<std::vector<NotificationRequest>()>& plan) override {
        added = plan();
    }
    void pending(std::function<void(std::vector<NotificationRequest>)> done) override {
        done(added);
    }
    void setDelegate(NotificationCenterDelegate*) override {}
    NotificationCenterDelegate* delegate() const override { return nullptr; }
};

eventInfo reminder(const std::string& id, std::int64_t type, std::int64_t notiType,
                   std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour = 0,
                   std::int64_t minute = 0) {
    eventInfo e;
    e.eventId = id;
    e.eventNotiId = id;
    e.eventTitle = "Title " + id;
    e.eventContent = "Content " + id;
    e.eventType = type;
    e.eventRepeatOrNot = type != 0;
    e.eventStartDateYear = year;
    e.eventStartDateMonth = month;
    e.eventStartDateDay = day;
    e.eventNotiOrNot = true;
    e.eventNotiType = notiType;
    e.eventNotiDateDayHour = hour;
    e.eventNotiDateDayMin = minute;
    return e;
}

class NotiPlanTest : public ::testing::Test {
protected:
    void SetUp() override { setNotificationCenter(center); }
    void TearDown() override { setNotificationCenter(nullptr); }
    IsolatedStorage storage;
    ScopedCalendarEnvironment env{fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8)};
    std::shared_ptr<RecordingCenter> center = std::make_shared<RecordingCenter>();
};

} // namespace

TEST(NotiLeadTime, RowsAndTheirTimeOfDay) {
    struct Case {
        std::int64_t type;
        double expected;
    };
    // 09:30 as the chosen time: only the day leads (4 to 9) add it.
    for (const auto c :
         {Case{0, 0}, Case{1, -3600}, Case{2, -10800}, Case{3, -21600}, Case{4, 34200},
          Case{5, -86400 + 34200}, Case{6, -259200 + 34200}, Case{7, -604800 + 34200},
          Case{8, -1209600 + 34200}, Case{9, -2419200 + 34200}, Case{10, 0}, Case{-1, 0}}) {
        EXPECT_EQ(leadTimeOffset(c.type, 9, 30), c.expected) << c.type;
    }
}

TEST_F(NotiPlanTest, PlanIsSortedByIntervalWithTheLeadsApplied) {
    // A yearly event on 20 March 09:00 a month ahead (row 9) and a daily 09:00 event fired at
    // the occurrence itself (row 0): today 09:00 is one hour ahead.
    const auto yearly = reminder("Y", 4, 9, 2000, 3, 20, 9, 0);
    auto daily = reminder("D", 1, 0, 2026, 3, 1);
    daily.eventDateWhenEveryDayHour = 9;
    const auto plan = plannedReminders({yearly, daily}, now(), Calendar::current());
    ASSERT_FALSE(plan.empty());
    // 20 March 2026 00:00 is 9 days 16 hours ahead; minus 28 days, plus 09:00.
    const double yearlyFirst = (9 * 86400 + 16 * 3600) - 2419200 + 9 * 3600;
    EXPECT_EQ(plan.front().eventId, "Y");
    EXPECT_DOUBLE_EQ(plan.front().timeInterval, yearlyFirst);
    EXPECT_EQ(plan[1].eventId, "D");
    EXPECT_DOUBLE_EQ(plan[1].timeInterval, 3600);
    EXPECT_EQ(plan[1].title, "Title D");
    EXPECT_EQ(plan[1].content, "Content D");
    EXPECT_TRUE(std::is_sorted(plan.begin(), plan.end(), [](const auto& a, const auto& b) {
        return a.timeInterval < b.timeInterval;
    }));
    // 100 daily elements (today's time is still to come) and 100 yearly ones (2026 to 2125): a
    // lead moves a reminder, it never drops an occurrence.
    EXPECT_EQ(plan.size(), 100u + 100u);
    // A run asks for its first entries only: the same, in the same order.
    const auto first = plannedReminders({yearly, daily}, now(), Calendar::current(), 60);
    EXPECT_EQ(first, decltype(plan)(plan.begin(), plan.begin() + 60));
}

TEST_F(NotiPlanTest, TheCapOfSixtyCountsThePastRemindersThatFileNothing) {
    struct Case {
        int pastOnes;      ///< reminders whose lead moment has passed
        std::size_t filed; ///< requests filed
    };
    for (const auto c : {Case{0, 60}, Case{1, 59}, Case{5, 55}}) {
        SCOPED_TRACE(c.pastOnes);
        IsolatedStorage fresh;
        // A daily event at 12:00 without lead: 100 coming reminders, the earliest today.
        auto daily = reminder("D", 1, 0, 2026, 3, 1);
        daily.eventDateWhenEveryDayHour = 12;
        std::vector<eventInfo> events{daily};
        // Yearly events today with a lead of a week: their reminders lie in the past and sort
        // first; each still holds one of the 60 places.
        for (int i = 0; i < c.pastOnes; ++i) {
            auto past = reminder("P" + std::to_string(i), 4, 7, 2020, 3, 11);
            events.push_back(past);
        }
        storeAll(events);
        notiFunc().replanAllNotiRequests();
        EXPECT_EQ(center->added.size(), c.filed);
        for (const auto& r : center->added) {
            EXPECT_GT(r.delaySeconds, 0);
            EXPECT_EQ(r.identifier.rfind("D@@", 0), 0u) << r.identifier;
            EXPECT_EQ(r.identifier.size(), 3u + 36u);
            EXPECT_EQ(r.subtitle, "Content D");
            EXPECT_TRUE(r.sound && r.timeSensitive);
        }
    }
}

TEST_F(NotiPlanTest, SixtyEntriesAreAllFiledAndTheSixtyFirstLatestIsDropped) {
    for (const int entries : {60, 61}) {
        SCOPED_TRACE(entries);
        IsolatedStorage fresh;
        // One-off events on the days after today, stored latest first, so that the store's order
        // is not the plan's: each has one reminder at 09:00 on its day.
        std::vector<eventInfo> events;
        for (int i = entries; i >= 1; --i) {
            events.push_back(reminder("E" + std::to_string(i), 0, 4, 2026, 3, 10 + i, 9, 0));
        }
        storeAll(events);
        notiFunc().replanAllNotiRequests();
        ASSERT_EQ(center->added.size(), 60u);
        for (std::size_t i = 0; i < center->added.size(); ++i) {
            EXPECT_EQ(center->added[i].identifier.substr(0, center->added[i].identifier.find("@@")),
                      "E" + std::to_string(i + 1));
        }
        // 09:00 on 9 May from 08:00 on 10 March: 60 days and an hour of wall time, less the hour
        // the clocks went forward on 29 March.
        EXPECT_DOUBLE_EQ(center->added.back().delaySeconds, 60 * 86400);
    }
}

TEST_F(NotiPlanTest, NothingIsFiledWithTheSwitchOffOrWithoutReminders) {
    auto off = reminder("A", 4, 4, 2020, 3, 11, 9);
    off.eventNotiOrNot = false;
    storeAll({off});
    notiFunc().replanAllNotiRequests();
    EXPECT_TRUE(center->added.empty());

    storeAll({reminder("B", 4, 4, 2020, 3, 11, 9)});
    Setting<bool>("ALL_APP_switchOfNotiOpenOrNotForAllEvent", true).set(false);
    notiFunc().replanAllNotiRequests();
    EXPECT_TRUE(center->added.empty());
}
