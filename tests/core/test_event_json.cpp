// The JSON form of events: the text matches a document built with nlohmann member by member, an
// event survives the trip to the widget side field for field, and the decoder refuses every
// element that lacks a member or holds one of the wrong type.
#include "records/EventJson.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

using namespace tidemark;
using OrderedJson = nlohmann::ordered_json;

namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

/// Calls `f(field)` for each of the 32 fields, in order.
template <class F> void forEachField(F&& f) {
    std::apply([&](const auto&... field) { (f(field), ...); }, EventFields::fields());
}

std::vector<std::string> fieldNames() {
    std::vector<std::string> names;
    forEachField([&](const auto& field) { names.emplace_back(field.name); });
    return names;
}

Bytes bytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

/// The reference form of one event, built as a document: blobs go through our Base64, which has
/// its own tests below.
OrderedJson referenceDocument(const EventFields& event) {
    OrderedJson object = OrderedJson::object();
    forEachField([&](const auto& field) {
        const auto& value = event.*(field.member);
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, Bytes>) {
            object[std::string(field.name)] = base64Encode(value);
        } else {
            object[std::string(field.name)] = value;
        }
    });
    return object;
}

/// Sets every field to a value that differs from its default and from the other fields.
eventObject sampleEvent(int seed) {
    eventObject event;
    int n = seed * 100;
    forEachField([&](const auto& field) {
        auto& value = event.*(field.member);
        using T = std::decay_t<decltype(value)>;
        ++n;
        if constexpr (std::is_same_v<T, std::string>) {
            value = std::string(field.name) + " " + std::to_string(n);
        } else if constexpr (std::is_same_v<T, std::int64_t>) {
            value = n;
        } else if constexpr (std::is_same_v<T, bool>) {
            value = (n % 2) == 0;
        } else {
            value = Bytes{static_cast<std::uint8_t>(n), 0, 0xFF};
        }
    });
    return event;
}

std::vector<eventObject> sampleEvents() {
    std::vector<eventObject> events{eventObject{}, sampleEvent(1), sampleEvent(2)};
    eventObject text = sampleEvent(3);
    text.eventTitle = "Quote \" backslash \\ slash / tab \t newline \n nul " +
                      std::string(1, '\0') + " bell \x07 del \x7F";
    text.eventContent = "Ünïcödé – 日本語 – 🎉 – \u2028";
    text.eventColorString = "";
    events.push_back(text);
    eventObject extremes = sampleEvent(4);
    extremes.eventStartDateYear = kMin;
    extremes.eventEndDateYear = kMax;
    extremes.eventDateWhenCustomizeRepeatTimes = -1;
    extremes.backupDataType01 = 0;
    Bytes all;
    for (int b = 0; b < 256; ++b) {
        all.push_back(static_cast<std::uint8_t>(b));
    }
    extremes.eventDateWhenEveryWeek = all;
    extremes.eventDateWhenEveryMonth = Bytes{0};
    events.push_back(extremes);
    return events;
}

TEST(EventJson, EncodingMatchesTheDocumentFormAndSurvivesTheWidgetSide) {
    const auto events = sampleEvents();
    OrderedJson reference = OrderedJson::array();
    for (const auto& event : events) {
        EXPECT_EQ(encodeEvent(event), referenceDocument(event).dump());
        reference.push_back(referenceDocument(event));
    }
    EXPECT_EQ(encodeEventArray(events), reference.dump());
    EXPECT_EQ(encodeEventArray(std::vector<eventObject>{}), "[]");
    EXPECT_EQ(encodeEvent(events[0]).find_first_of(" \n"), std::string::npos) << "compact form";
    const std::string text = encodeEvent(events[3]);
    EXPECT_NE(text.find("slash / tab"), std::string::npos) << "'/' stays unescaped";
    EXPECT_NE(text.find("日本語 – 🎉"), std::string::npos) << "UTF-8 is written as it is";
    EXPECT_NE(text.find("nul \\u0000 bell \\u0007 del \x7F"), std::string::npos);

    JsonDecodeError error;
    const auto atWidget = decodeWidgetEventArray(encodeEventArray(events), &error);
    ASSERT_TRUE(atWidget.has_value()) << error.message;
    ASSERT_EQ(atWidget->size(), events.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        forEachField([&](const auto& field) {
            EXPECT_EQ((*atWidget)[i].*(field.member), events[i].*(field.member))
                << i << " " << field.name;
        });
    }
    EXPECT_EQ(decodeEventArray(encodeEventArray(*atWidget), &error), events) << error.message;

    // Stored events written with the reserved fields blank: the same text as blanked copies.
    std::vector<eventInfo> stored;
    std::vector<eventObject> blanked;
    for (const auto& event : events) {
        stored.push_back(eventAs<eventInfo>(event));
        blanked.push_back(event);
        blanked.back().backupDataType01 = 0;
        blanked.back().backupDataType02.clear();
        blanked.back().backupDataType03.clear();
    }
    EXPECT_EQ(encodeEventArrayWithBlankReserved(stored), encodeEventArray(blanked));
    EXPECT_EQ(encodeEventArrayWithBlankReserved({}), "[]");
}

TEST(EventJson, TextThatIsNotUtf8FailsTheEncoding) {
    for (const std::string text : {"ab\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        SCOPED_TRACE(::testing::PrintToString(text));
        eventObject event;
        event.eventContent = text;
        try {
            (void)encodeEventArray(std::vector<eventObject>{event});
            ADD_FAILURE() << "no exception";
        } catch (const nlohmann::json::type_error& e) {
            EXPECT_EQ(e.id, 316);
        }
    }
}

/// An array of two sample events as a document, for tests that spoil one member of the second.
OrderedJson twoEvents() {
    return OrderedJson::array(
        {referenceDocument(sampleEvent(1)), referenceDocument(sampleEvent(2))});
}

TEST(EventJson, EachMemberIsRequiredWithItsType) {
    // Integers with a fraction, out of range or written as a string, booleans written as
    // numbers, blobs that are no strict Base64.
    const std::map<FieldType, std::vector<std::string>> wrong = {
        {FieldType::String, {"1", "null"}},
        {FieldType::Int,
         {"\"1\"", "1.5", "5.0", "true", "9223372036854775808", "-9223372036854775809"}},
        {FieldType::Bool, {"0", "\"true\""}},
        {FieldType::Bytes, {"1", "\"QQ\""}},
    };
    int checked = 0;
    forEachField([&](const auto& field) {
        const std::string name(field.name);
        auto missing = twoEvents();
        missing[1].erase(name);
        JsonDecodeError error;
        EXPECT_FALSE(decodeEventArray(missing.dump(), &error).has_value());
        EXPECT_NE(error.message.find("element 1: member \"" + name + "\" is missing"),
                  std::string::npos)
            << error.message;
        EXPECT_FALSE(decodeWidgetEventArray(missing.dump()).has_value()) << name;
        for (const auto& raw : wrong.at(field.type)) {
            auto spoiled = twoEvents();
            spoiled[1][name] = nullptr;
            std::string text = spoiled.dump();
            const std::string slot = "\"" + name + "\":null";
            text.replace(text.find(slot), slot.size(), "\"" + name + "\":" + raw);
            error.message.clear();
            EXPECT_FALSE(decodeEventArray(text, &error).has_value()) << name << " " << raw;
            EXPECT_NE(error.message.find("element 1"), std::string::npos) << error.message;
            EXPECT_NE(error.message.find("\"" + name + "\""), std::string::npos) << error.message;
            EXPECT_FALSE(decodeWidgetEventArray(text).has_value()) << name << " " << raw;
        }
        ++checked;
    });
    EXPECT_EQ(checked, 32);
}

TEST(EventJson, DecodingAcceptsWhatJsonAllowsForTheRightTypes) {
    // Unknown members, any member order, whitespace, the extreme integers and -0.
    auto document = twoEvents();
    document[0]["somethingNew"] = {{"nested", true}};
    OrderedJson reversed = OrderedJson::object();
    const auto names = fieldNames();
    for (auto it = names.rbegin(); it != names.rend(); ++it) {
        reversed[*it] = document[1][*it];
    }
    document[1] = reversed;
    document[1]["eventStartDateYear"] = kMin;
    document[1]["eventEndDateYear"] = static_cast<std::uint64_t>(kMax);
    std::string text = document.dump(2);
    const std::string slot = "\"eventType\": " + std::to_string(sampleEvent(1).eventType);
    text.replace(text.find(slot), slot.size(), "\"eventType\": -0");

    JsonDecodeError error;
    const auto events = decodeEventArray(text, &error);
    ASSERT_TRUE(events.has_value()) << error.message;
    eventObject first = sampleEvent(1), second = sampleEvent(2);
    first.eventType = 0;
    second.eventStartDateYear = kMin;
    second.eventEndDateYear = kMax;
    EXPECT_EQ(*events, (std::vector<eventObject>{first, second}));
    EXPECT_EQ(decodeEventArray("[]"), std::vector<eventObject>{});
}

TEST(EventJson, TextThatIsNoArrayOfObjectsFails) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "invalid JSON"},
        {"[1,]", "invalid JSON"},
        {"[] []", "invalid JSON"},
        {"[\"\xFF\"]", "invalid JSON"},
        {"{}", "top level"},
        {"\"[]\"", "top level"},
        {"[[]]", "element 0"},
        {"[" + twoEvents()[0].dump() + ",null]", "element 1"},
        {"[{}]", "element 0: member \"eventId\" is missing"},
    };
    for (const auto& [text, reason] : cases) {
        SCOPED_TRACE(text);
        JsonDecodeError error;
        EXPECT_FALSE(decodeEventArray(text, &error).has_value());
        EXPECT_NE(error.message.find(reason), std::string::npos) << error.message;
        EXPECT_FALSE(decodeWidgetEventArray(text).has_value());
    }
}

TEST(Base64, EncodesAndDecodesTheStandardAlphabetWithPadding) {
    const std::pair<std::string, std::string> vectors[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"\xFB\xFF\xBF", "+/+/"},
        {std::string("\0\0", 2), "AAA="},
    };
    for (const auto& [plain, encoded] : vectors) {
        EXPECT_EQ(base64Encode(bytesOf(plain)), encoded);
        EXPECT_EQ(base64Decode(encoded), bytesOf(plain)) << encoded;
    }
    // Unused bits in the last group are ignored rather than refused.
    EXPECT_EQ(base64Decode("Zh=="), bytesOf("f"));
}

TEST(Base64, DecodingIsStrict) {
    const std::string invalid[] = {"Zg",
                                   "Zg=",
                                   " Zm9v",
                                   "Zm9v\n",
                                   "Zm 9v",
                                   "-_8=",
                                   "=Zg=",
                                   "Zm=v",
                                   "Zg==Zg==",
                                   "Zm9vYmFy=",
                                   "Zg===",
                                   "====",
                                   std::string("Zm9\0", 4),
                                   "Zm\xC3\xA9"};
    for (const auto& text : invalid) {
        EXPECT_FALSE(base64Decode(text).has_value()) << ::testing::PrintToString(text);
    }
}

} // namespace
