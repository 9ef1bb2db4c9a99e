// Events and memos to cloud records and back, generated from the records' field lists: the first
// field (the primary key) becomes the record name, the others the keys in their order.
#include "cloud/CloudRecordMapping.h"

#include "base/Fatal.h"

#include <tuple>
#include <type_traits>
#include <variant>

namespace tidemark {

namespace {

CloudValue toCloud(const std::string& value) {
    return CloudValue(std::in_place_type<std::string>, value);
}
CloudValue toCloud(std::int64_t value) {
    return CloudValue(std::in_place_type<std::int64_t>, value);
}
CloudValue toCloud(bool value) {
    return CloudValue(std::in_place_type<std::int64_t>, boolToCloudInt(value));
}
CloudValue toCloud(const Bytes& value) {
    return CloudValue(std::in_place_type<Bytes>, value);
}

/// The value of `key` as a `T`, or a fatal stop.
template <class T> T fromCloud(const CloudRecord& record, std::string_view key) {
    const CloudValue& value = unwrap(record.field(key));
    if constexpr (std::is_same_v<T, bool>) {
        return cloudIntToBool(unwrap(std::get_if<std::int64_t>(&value)));
    } else {
        return unwrap(std::get_if<T>(&value));
    }
}

template <class Record>
CloudRecord recordOf(const Record& source, std::string_view type, std::string_view zone) {
    CloudRecord record;
    record.recordType = std::string(type);
    record.id = {std::string(zone), source.*(std::get<0>(Record::fields()).member)};
    std::apply(
        [&](auto, auto... keys) {
            record.fields.reserve(sizeof...(keys));
            (record.fields.emplace_back(std::string(keys.name), toCloud(source.*(keys.member))),
             ...);
        },
        Record::fields());
    return record;
}

template <class Record> Record readRecord(const CloudRecord& record) {
    Record out;
    std::apply(
        [&](auto primaryKey, auto... keys) {
            out.*(primaryKey.member) = record.id.recordName;
            ((out.*(keys.member) =
                  fromCloud<typename decltype(keys)::value_type>(record, keys.name)),
             ...);
        },
        Record::fields());
    return out;
}

} // namespace

CloudRecordId eventRecordId(const std::string& eventId) {
    return {std::string(kEventZoneName), eventId};
}

CloudRecordId memoRecordId(const std::string& memoId) {
    return {std::string(kMemoZoneName), memoId};
}

CloudRecord cloudRecordOf(const EventFields& event) {
    return recordOf(event, kEventRecordType, kEventZoneName);
}

CloudRecord cloudRecordOf(const memoDataForNotiObject& memo) {
    return recordOf(memo, kMemoRecordType, kMemoZoneName);
}

eventObject eventObjectFromCloudRecord(const CloudRecord& record) {
    return eventAs<eventObject>(readRecord<EventFields>(record));
}

memoDataForNotiObject memoFromCloudRecord(const CloudRecord& record) {
    return readRecord<memoDataForNotiObject>(record);
}

} // namespace tidemark
