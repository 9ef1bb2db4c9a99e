// How events and memos look in the cloud. This is a wire format: records written by one install
// are read by another, so the record types, zones, names, keys and value kinds below never change.
//
// An event is a record of type "eventInfo" in "eventZone" named by its eventId, with the other 31
// fields as keys in declaration order; a memo is a "memoDataForNotiObject" in "memoZone" named by
// its memoId, with the other 7 fields (its "eventId" is the owning event's). Texts are strings,
// integers are integers, booleans are the integers 1 and 0, blobs are copied as stored.
//
// Where a service keeps records as files, one record is this JSON text, keys in writing order:
//   {"recordType": "...", "recordName": "...",
//    "fields": {"<key>": {"type": "string" | "int64" | "bytes", "value": ...}, ...}}
// with blobs as standard Base64. The zone is not in the text: it is where the file lies.
#pragma once

#include "cloud/CloudService.h"
#include "records/EventJson.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

inline constexpr std::string_view kEventZoneName = "eventZone";
inline constexpr std::string_view kMemoZoneName = "memoZone";
inline constexpr std::string_view kEventRecordType = "eventInfo";
inline constexpr std::string_view kMemoRecordType = "memoDataForNotiObject";

/// A boolean as the cloud holds it: 1 or 0.
constexpr std::int64_t boolToCloudInt(bool value) {
    return value ? 1 : 0;
}
/// Only exactly 1 is true; every other number reads as false.
constexpr bool cloudIntToBool(std::int64_t value) {
    return value == 1;
}

CloudRecordId eventRecordId(const std::string& eventId);
CloudRecordId memoRecordId(const std::string& memoId);

/// The cloud record of an event or a memo: every key, always, empty texts and blobs included.
CloudRecord cloudRecordOf(const EventFields& event);
CloudRecord cloudRecordOf(const memoDataForNotiObject& memo);

/// Reads a record back. Only this program writes these records, so there is no lenient path: a
/// missing key or a value of another kind is a fatal stop with kNilMessage.
eventObject eventObjectFromCloudRecord(const CloudRecord& record);
memoDataForNotiObject memoFromCloudRecord(const CloudRecord& record);

/// The JSON text of a record. Text that is not valid UTF-8 can't be carried by JSON: each bad
/// sequence is written as U+FFFD.
std::string encodeCloudRecordJson(const CloudRecord& record);
/// The record in `text`, placed in `zoneName`; nothing (and the reason in `error`) for anything
/// that is not such a text: bad JSON, a missing or mistyped member, an unknown value type, an
/// integer outside 64 bits, bad Base64. Unknown members are ignored. Never throws.
std::optional<CloudRecord> decodeCloudRecordJson(std::string_view text, const std::string& zoneName,
                                                 JsonDecodeError* error = nullptr);

} // namespace tidemark
