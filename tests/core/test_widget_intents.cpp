// The widgets' configuration side: what the event provider offers for each published value of
// the shared suite (and which values stop the process), which handler answers which intent, and
// the order of the large widget's list.
#include "TestSupport.h"
#include "base/Fatal.h"
#include "records/Defaults.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"
#include "widgets/IntentHandler.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace tidemark;
using tidemark::testing::IsolatedStorage;
using tidemark::testing::zoneEnvironment;

namespace {

eventObject event(std::string id, std::string title) {
    eventObject e;
    e.eventId = std::move(id);
    e.eventTitle = std::move(title);
    e.eventStartDateYear = 2026;
    e.eventStartDateMonth = 1;
    e.eventStartDateDay = 1;
    return e;
}

Bytes bytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

void publish(const std::optional<DefaultsValue>& value) {
    auto* suite = DefaultsSuite::named(kSharedSuiteName);
    ASSERT_NE(suite, nullptr);
    if (value) {
        suite->setValue(kWidgetDataKey, *value);
    } else {
        suite->removeValue(kWidgetDataKey);
    }
}

/// What the handler for `intent` offers; a lock-screen intent must get the lock-screen handler,
/// every other one (the large widget's too) the small and medium one.
std::vector<EventBasicInfo> offered(const WidgetIntent& intent) {
    const auto handler = IntentHandler().handler(intent);
    EXPECT_EQ(std::holds_alternative<LockScreenWidgetHandler>(handler),
              std::holds_alternative<IntentForLockScreenWidgetIntent>(intent));
    std::vector<EventBasicInfo> items;
    int calls = 0;
    auto completion = [&](ObjectCollection<EventBasicInfo> collection,
                          std::optional<IntentError> error) {
        ++calls;
        EXPECT_FALSE(error.has_value());
        items = std::move(collection.items);
    };
    std::visit(
        [&](const auto& chosen) { chosen.provideEventSelectedOptionsCollection({}, completion); },
        handler);
    EXPECT_EQ(calls, 1);
    return items;
}

} // namespace

TEST(EventOptions, EveryPublishedEventIsOfferedInPublishedOrderUnfiltered) {
    using Items = std::vector<EventBasicInfo>;
    auto over = event("ended", "Over");
    over.eventHaveEndDateOrNot = true;
    over.eventEndDateYear = 2000;
    const struct {
        const char* name;
        std::vector<eventObject> events;
        Items expected;
    } cases[] = {
        {"empty array", {}, {}},
        {"published order; empty and equal titles and ended events are kept",
         {event("Z", "Same"), event("A", ""), event("M", "Same"), over},
         {{"Z", "Same"}, {"A", ""}, {"M", "Same"}, {"ended", "Over"}}},
    };
    IsolatedStorage storage;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        publish(bytesOf(encodeEventArray(c.events)));
        EXPECT_EQ(offered(IntentForSmallAndMediumWidgetIntent{}), c.expected);
        EXPECT_EQ(offered(IntentForLockScreenWidgetIntent{}), c.expected);
        EXPECT_EQ(offered(IntentForLargeWidgetIntent{EventBasicTypeEnum::starred}), c.expected);
        EXPECT_TRUE(publishedWidgetEvents().has_value());
    }
}

TEST(EventOptionsDeathTest, DataThatIsMissingOrNotAnArrayOfEventsStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string nil = "^" + std::string(kNilMessage) + "\n?$";
    const std::string cantDecode = "^Can't decode the widget data: ";
    auto missingMember = nlohmann::json::parse(encodeEventArray({event("A", "a")}));
    missingMember[0].erase("eventColorString");
    const struct {
        const char* name;
        std::optional<DefaultsValue> value;
        std::string message;
    } cases[] = {
        {"a string, not bytes", DefaultsValue(std::string("[]")), nil},
        {"an object, not an array", bytesOf(encodeEvent(event("A", "a"))), cantDecode},
        {"an element without one member", bytesOf(missingMember.dump()), cantDecode},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        IsolatedStorage storage;
        publish(c.value);
        EXPECT_FALSE(publishedWidgetEvents().has_value());
        EXPECT_DEATH(eventSelectedOptions(), c.message);
    }
}

TEST(LargeWidget, KindsChooseTheEventsAndTheNearestComesFirst) {
    const Calendar berlin(zoneEnvironment("Europe/Berlin"));
    const Date now = berlin.date(tidemark::testing::dateParts(2026, 3, 10, 12)).value();
    auto at = [](std::string id, int month, int day) {
        eventObjectAtWidget e;
        e.eventId = std::move(id);
        e.eventStartDateYear = 2020;
        e.eventStartDateMonth = month;
        e.eventStartDateDay = day;
        return e;
    };
    auto farOneOff = at("far", 12, 1);
    auto soonStarred = at("soon", 3, 12);
    soonStarred.eventStarOrNot = true;
    auto todayYearly = at("today", 3, 10);
    todayYearly.eventRepeatOrNot = true;
    todayYearly.eventType = 4;
    auto ended = at("ended", 4, 1);
    ended.eventRepeatOrNot = true;
    ended.eventType = 4;
    ended.eventHaveEndDateOrNot = true;
    ended.eventEndDateYear = 2021;
    ended.eventEndDateMonth = 1;
    ended.eventEndDateDay = 1;
    const std::vector events{farOneOff, ended, soonStarred, todayYearly};

    using Ids = std::vector<std::string>;
    const struct {
        std::int64_t raw;
        Ids expected;
    } cases[] = {
        {0, {"today", "soon", "far", "ended"}},
        {1, {"today", "soon", "far", "ended"}},
        {2, {"soon", "far"}},
        {3, {"today", "ended"}},
        {4, {"soon"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.raw);
        Ids ids;
        for (const auto& e :
             largeWidgetEvents(events, eventBasicTypeEnum(c.raw).value(), now, berlin)) {
            ids.push_back(e.eventId);
        }
        EXPECT_EQ(ids, c.expected);
    }
    EXPECT_FALSE(eventBasicTypeEnum(5).has_value());
    EXPECT_FALSE(eventBasicTypeEnum(-1).has_value());
}
