// The persisted records and the two event values that cross boundaries.
//
// Every record is flat: strings, 64-bit integers, booleans and byte blobs, with a string primary
// key. Each type describes its fields once, in declaration order, through `fields()`; the store's
// columns, the JSON form and the copies between types are all generated from those lists, so the
// order of the fields is stated in exactly one place per record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tidemark {

using Bytes = std::vector<std::uint8_t>;

/// The type of a persisted field, as the store and the JSON form see it.
enum class FieldType { String, Int, Bool, Bytes };

template <class T> constexpr FieldType fieldTypeOf();
template <> constexpr FieldType fieldTypeOf<std::string>() {
    return FieldType::String;
}
template <> constexpr FieldType fieldTypeOf<std::int64_t>() {
    return FieldType::Int;
}
template <> constexpr FieldType fieldTypeOf<bool>() {
    return FieldType::Bool;
}
template <> constexpr FieldType fieldTypeOf<Bytes>() {
    return FieldType::Bytes;
}

/// One field of a record: its name and where it lives.
template <class Record, class Member> struct Field {
    std::string_view name;
    Member Record::*member;
    using record_type = Record;
    using value_type = Member;
    static constexpr FieldType type = fieldTypeOf<Member>();
};

template <class Record, class Member>
constexpr Field<Record, Member> field(std::string_view name, Member Record::*member) {
    return {name, member};
}

/// The 32 fields of an event, shared by `eventInfo` (the stored record), `eventObject` (the value
/// inside the program and in the widget data) and `eventObjectAtWidget` (its twin on the widget
/// side). The three are distinct types so that a conversion between them is always explicit.
struct EventFields {
    std::string eventId;
    std::string eventTitle;
    std::string eventContent;
    std::string timeStampGenerate;
    std::int64_t eventStartDateYear = 0;
    std::int64_t eventStartDateMonth = 0;
    std::int64_t eventStartDateDay = 0;
    bool eventRepeatOrNot = false;
    std::int64_t eventType = 0;
    std::int64_t eventDateWhenEveryDayHour = 0;
    std::int64_t eventDateWhenEveryDayMin = 0;
    Bytes eventDateWhenEveryWeek;
    Bytes eventDateWhenEveryMonth;
    bool eventHaveCustomizeInterval = false;
    std::int64_t eventDateWhenCustomizeRepeatTimes = 0;
    bool eventNotiOrNot = false;
    std::int64_t eventNotiType = 0;
    std::int64_t eventNotiDateDayHour = 0;
    std::int64_t eventNotiDateDayMin = 0;
    std::string eventNotiId;
    bool eventShareOrNot = false;
    std::string eventShareGroupId;
    bool eventHaveEndDateOrNot = false;
    std::int64_t eventEndDateYear = 0;
    std::int64_t eventEndDateMonth = 0;
    std::int64_t eventEndDateDay = 0;
    bool eventStarOrNot = false;
    bool eventHaveMemoOrNot = false;
    std::string eventColorString;
    std::int64_t backupDataType01 = 0;
    std::string backupDataType02;
    std::string backupDataType03;

    bool operator==(const EventFields&) const = default;

    static constexpr auto fields() {
        using E = EventFields;
        return std::tuple{
            field("eventId", &E::eventId),
            field("eventTitle", &E::eventTitle),
            field("eventContent", &E::eventContent),
            field("timeStampGenerate", &E::timeStampGenerate),
            field("eventStartDateYear", &E::eventStartDateYear),
            field("eventStartDateMonth", &E::eventStartDateMonth),
            field("eventStartDateDay", &E::eventStartDateDay),
            field("eventRepeatOrNot", &E::eventRepeatOrNot),
            field("eventType", &E::eventType),
            field("eventDateWhenEveryDayHour", &E::eventDateWhenEveryDayHour),
            field("eventDateWhenEveryDayMin", &E::eventDateWhenEveryDayMin),
            field("eventDateWhenEveryWeek", &E::eventDateWhenEveryWeek),
            field("eventDateWhenEveryMonth", &E::eventDateWhenEveryMonth),
            field("eventHaveCustomizeInterval", &E::eventHaveCustomizeInterval),
            field("eventDateWhenCustomizeRepeatTimes", &E::eventDateWhenCustomizeRepeatTimes),
            field("eventNotiOrNot", &E::eventNotiOrNot),
            field("eventNotiType", &E::eventNotiType),
            field("eventNotiDateDayHour", &E::eventNotiDateDayHour),
            field("eventNotiDateDayMin", &E::eventNotiDateDayMin),
            field("eventNotiId", &E::eventNotiId),
            field("eventShareOrNot", &E::eventShareOrNot),
            field("eventShareGroupId", &E::eventShareGroupId),
            field("eventHaveEndDateOrNot", &E::eventHaveEndDateOrNot),
            field("eventEndDateYear", &E::eventEndDateYear),
            field("eventEndDateMonth", &E::eventEndDateMonth),
            field("eventEndDateDay", &E::eventEndDateDay),
            field("eventStarOrNot", &E::eventStarOrNot),
            field("eventHaveMemoOrNot", &E::eventHaveMemoOrNot),
            field("eventColorString", &E::eventColorString),
            field("backupDataType01", &E::backupDataType01),
            field("backupDataType02", &E::backupDataType02),
            field("backupDataType03", &E::backupDataType03),
        };
    }
};

/// One dated event in the store. Primary key `eventId`.
struct eventInfo : EventFields {
    static constexpr std::string_view className = "eventInfo";
};

/// An event as a plain value: what goes into `realmDataFunc::addEventData` and what the widget
/// data holds.
struct eventObject : EventFields {};

/// The widget side's twin of `eventObject`: it decodes what `eventObject` encodes.
struct eventObjectAtWidget : EventFields {};

/// Explicit conversions between the three event types (all 32 fields, unchanged).
template <class To, class From> To eventAs(const From& from) {
    To to;
    static_cast<EventFields&>(to) = static_cast<const EventFields&>(from);
    return to;
}

/// One memo of an event. Primary key `memoId`. `eventId` points at its event without any
/// constraint.
struct memoDataForNotiObject {
    std::string memoId;
    std::string eventId;
    std::string timeStamp;
    std::string title;
    std::string content;
    std::int64_t backupDataType01 = 0;
    std::string backupDataType02;
    std::string backupDataType03;

    bool operator==(const memoDataForNotiObject&) const = default;
    static constexpr std::string_view className = "memoDataForNotiObject";
    static constexpr auto fields() {
        using M = memoDataForNotiObject;
        return std::tuple{
            field("memoId", &M::memoId),
            field("eventId", &M::eventId),
            field("timeStamp", &M::timeStamp),
            field("title", &M::title),
            field("content", &M::content),
            field("backupDataType01", &M::backupDataType01),
            field("backupDataType02", &M::backupDataType02),
            field("backupDataType03", &M::backupDataType03),
        };
    }
};

/// A named group. Primary key `shareGroupId`. Reserved: no flow writes it yet.
struct shareGroup {
    std::string shareGroupId;
    std::string title;
    std::int64_t backupDataType01 = 0;
    std::string backupDataType02;
    std::string backupDataType03;

    bool operator==(const shareGroup&) const = default;
    static constexpr std::string_view className = "shareGroup";
    static constexpr auto fields() {
        using G = shareGroup;
        return std::tuple{
            field("shareGroupId", &G::shareGroupId),
            field("title", &G::title),
            field("backupDataType01", &G::backupDataType01),
            field("backupDataType02", &G::backupDataType02),
            field("backupDataType03", &G::backupDataType03),
        };
    }
};

/// A member of a group. Primary key `shareMemberId`. Reserved: no flow writes it yet.
struct shareMember {
    std::string shareMemberId;
    std::string shareGroupId;
    std::string memberMemo;
    std::string memberInfo;
    std::int64_t backupDataType01 = 0;
    std::string backupDataType02;
    std::string backupDataType03;

    bool operator==(const shareMember&) const = default;
    static constexpr std::string_view className = "shareMember";
    static constexpr auto fields() {
        using S = shareMember;
        return std::tuple{
            field("shareMemberId", &S::shareMemberId),
            field("shareGroupId", &S::shareGroupId),
            field("memberMemo", &S::memberMemo),
            field("memberInfo", &S::memberInfo),
            field("backupDataType01", &S::backupDataType01),
            field("backupDataType02", &S::backupDataType02),
            field("backupDataType03", &S::backupDataType03),
        };
    }
};

/// One calendar day of the day window: working rows, rebuilt whenever the window changes.
/// Primary key `dataId`.
struct appFuncForDateData {
    std::string dataId;
    std::string dateString;
    std::int64_t dateInfoYear = 0;
    std::int64_t dateInfoMonth = 0;
    std::int64_t dateInfoDay = 0;

    bool operator==(const appFuncForDateData&) const = default;
    static constexpr std::string_view className = "appFuncForDateData";
    static constexpr auto fields() {
        using A = appFuncForDateData;
        return std::tuple{
            field("dataId", &A::dataId),
            field("dateString", &A::dateString),
            field("dateInfoYear", &A::dateInfoYear),
            field("dateInfoMonth", &A::dateInfoMonth),
            field("dateInfoDay", &A::dateInfoDay),
        };
    }
};

/// A record class the store keeps: it names its table and lists its fields, the first being the
/// primary key.
template <class R>
concept StoredRecord = requires {
    { R::className } -> std::convertible_to<std::string_view>;
    R::fields();
};

/// The primary key of a stored record (always its first field).
template <StoredRecord R> const std::string& primaryKeyOf(const R& record) {
    return record.*(std::get<0>(R::fields()).member);
}

} // namespace tidemark
