// The JSON form of an event: one object with exactly 32 members, named and ordered as the fields
// of EventFields; strings, integers without a fraction, booleans, and blobs as standard Base64
// strings. The widget data is a JSON array of such objects.
#pragma once

#include "records/eventInfo.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Standard Base64 (RFC 4648, with padding).
std::string base64Encode(const Bytes& bytes);
/// Strict standard Base64; no result for anything else.
std::optional<Bytes> base64Decode(std::string_view text);

/// Encodes events as a compact JSON array, members in field order, no sorting, no escaping of
/// '/' and non-ASCII text written as UTF-8. A string field that is not valid UTF-8 makes the
/// encoding throw nlohmann::json::type_error (id 316); callers treat that as a failed encoding.
std::string encodeEventArray(const std::vector<eventObject>& events);
std::string encodeEventArray(const std::vector<eventObjectAtWidget>& events);

/// The same array for stored events, with the three reserved fields written as 0, "" and ""
/// whatever the records hold (the widget data), without copying the events first.
std::string encodeEventArrayWithBlankReserved(const std::vector<eventInfo>& events);

/// One event as a JSON object text.
std::string encodeEvent(const EventFields& event);

/// Why a decoding failed, for logs and for the fatal stops of the readers.
struct JsonDecodeError {
    std::string message;
};

/// Strict decoding: the text must be a JSON array whose every element is an object holding all
/// 32 members with the right types (unknown members are ignored). Any bad element fails the
/// whole array.
std::optional<std::vector<eventObject>> decodeEventArray(std::string_view json,
                                                         JsonDecodeError* error = nullptr);
std::optional<std::vector<eventObjectAtWidget>>
decodeWidgetEventArray(std::string_view json, JsonDecodeError* error = nullptr);

} // namespace tidemark
