// The JSON text of one cloud record. Kept apart from the mapping so that the fuzzer builds it
// with nothing but the Base64 helpers.
#include "cloud/CloudRecordMapping.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

namespace tidemark {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kTypeString = "string";
constexpr std::string_view kTypeInt = "int64";
constexpr std::string_view kTypeBytes = "bytes";

Json fieldJson(const CloudValue& value) {
    Json entry = Json::object();
    if (const auto* s = std::get_if<std::string>(&value)) {
        entry["type"] = kTypeString;
        entry["value"] = *s;
    } else if (const auto* i = std::get_if<std::int64_t>(&value)) {
        entry["type"] = kTypeInt;
        entry["value"] = *i;
    } else {
        entry["type"] = kTypeBytes;
        entry["value"] = base64Encode(std::get<Bytes>(value));
    }
    return entry;
}

/// The value of one field entry, or the reason it is none.
std::variant<CloudValue, std::string> fieldValue(const Json& entry) {
    if (!entry.is_object()) {
        return std::string("is not an object");
    }
    const auto type = entry.find("type");
    const auto value = entry.find("value");
    if (type == entry.end() || !type->is_string()) {
        return std::string("has no string \"type\"");
    }
    if (value == entry.end()) {
        return std::string("has no \"value\"");
    }
    const auto& typeName = type->get_ref<const std::string&>();
    if (typeName == kTypeString) {
        if (!value->is_string()) {
            return std::string("of type string has a value that is not a string");
        }
        return CloudValue(value->get<std::string>());
    }
    if (typeName == kTypeInt) {
        if (value->is_number_unsigned()) {
            const auto u = value->get<std::uint64_t>();
            if (u > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
                return std::string("of type int64 is out of range");
            }
            return CloudValue(static_cast<std::int64_t>(u));
        }
        if (!value->is_number_integer()) {
            return std::string("of type int64 has a value that is not an integer");
        }
        return CloudValue(value->get<std::int64_t>());
    }
    if (typeName == kTypeBytes) {
        if (!value->is_string()) {
            return std::string("of type bytes has a value that is not a string");
        }
        auto bytes = base64Decode(value->get_ref<const std::string&>());
        if (!bytes) {
            return std::string("of type bytes is not valid Base64");
        }
        return CloudValue(std::move(*bytes));
    }
    return "has the unknown type \"" + typeName + "\"";
}

} // namespace

std::string encodeCloudRecordJson(const CloudRecord& record) {
    Json fields = Json::object();
    for (const auto& [key, value] : record.fields) {
        fields[key] = fieldJson(value);
    }
    Json doc = Json::object();
    doc["recordType"] = record.recordType;
    doc["recordName"] = record.id.recordName;
    doc["fields"] = std::move(fields);
    return doc.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<CloudRecord> decodeCloudRecordJson(std::string_view text, const std::string& zoneName,
                                                 JsonDecodeError* error) {
    const auto fail = [&](std::string reason) -> std::optional<CloudRecord> {
        if (error) {
            error->message = "cloud record: " + std::move(reason);
        }
        return std::nullopt;
    };
    Json doc;
    try {
        doc = Json::parse(text);
    } catch (const Json::exception& e) { // a syntax error, or a number too large for a double
        return fail(std::string("not valid JSON (") + e.what() + ")");
    }
    if (!doc.is_object()) {
        return fail("not a JSON object");
    }
    CloudRecord record;
    record.id.zoneName = zoneName;
    for (auto [member, target] : {std::pair{"recordType", &record.recordType},
                                  std::pair{"recordName", &record.id.recordName}}) {
        const auto it = doc.find(member);
        if (it == doc.end() || !it->is_string() || it->get_ref<const std::string&>().empty()) {
            return fail(std::string("\"") + member + "\" must be a non-empty string");
        }
        *target = it->get<std::string>();
    }
    const auto fields = doc.find("fields");
    if (fields == doc.end() || !fields->is_object()) {
        return fail("\"fields\" must be an object");
    }
    record.fields.reserve(fields->size());
    for (const auto& [key, entry] : fields->items()) {
        auto value = fieldValue(entry);
        if (auto* reason = std::get_if<std::string>(&value)) {
            return fail("field \"" + key + "\" " + *reason);
        }
        record.fields.emplace_back(key, std::get<CloudValue>(std::move(value)));
    }
    return record;
}

} // namespace tidemark
