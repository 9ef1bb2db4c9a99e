// The JSON form of events.
//
// Encoding writes the text directly instead of building a document first: the widget data holds
// every event and is written again after each change, and a direct writer is several times faster
// than filling an ordered document and dumping it. Its output is byte for byte what nlohmann's
// dump() gives for the same document (compact, '/' unescaped, UTF-8 kept, control characters
// escaped). Text that is not valid UTF-8 is handed to nlohmann, which throws its type_error 316;
// the exception reaches the caller, who treats it as a failed encoding.
//
// Decoding parses with nlohmann and then checks every member of every element.
#include "records/EventJson.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <tuple>
#include <type_traits>
#include <utility>

namespace tidemark {

namespace {

constexpr char kBase64Alphabet[] =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> makeBase64Values() {
    std::array<std::int8_t, 256> values{};
    for (auto& v : values) {
        v = -1;
    }
    for (int i = 0; i < 64; ++i) {
        values[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<std::int8_t>(i);
    }
    return values;
}
constexpr auto kBase64Values = makeBase64Values();

/// The length of the well-formed UTF-8 sequence at `p` (RFC 3629: no overlong forms, no
/// surrogates, nothing above U+10FFFF), or 0.
std::size_t utf8SequenceLength(const unsigned char* p, const unsigned char* end) {
    const unsigned char c = p[0];
    std::size_t n = 0;
    unsigned char lo = 0x80, hi = 0xBF; // allowed range of the second byte
    if (c >= 0xC2 && c <= 0xDF) {
        n = 2;
    } else if (c >= 0xE0 && c <= 0xEF) {
        n = 3;
        lo = c == 0xE0 ? 0xA0 : 0x80;
        hi = c == 0xED ? 0x9F : 0xBF;
    } else if (c >= 0xF0 && c <= 0xF4) {
        n = 4;
        lo = c == 0xF0 ? 0x90 : 0x80;
        hi = c == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (static_cast<std::size_t>(end - p) < n || p[1] < lo || p[1] > hi) {
        return 0;
    }
    for (std::size_t i = 2; i < n; ++i) {
        if (p[i] < 0x80 || p[i] > 0xBF) {
            return 0;
        }
    }
    return n;
}

/// The bytes a string can't copy as they are: control characters, '"', '\\', and the start of
/// every non-ASCII sequence (checked as UTF-8).
constexpr std::array<bool, 256> makeSpecialBytes() {
    std::array<bool, 256> special{};
    for (int c = 0; c < 256; ++c) {
        special[c] = c < 0x20 || c >= 0x80 || c == '"' || c == '\\';
    }
    return special;
}
constexpr auto kSpecialBytes = makeSpecialBytes();

void appendString(std::string& out, std::string_view text) {
    static constexpr char kHex[] = "0123456789abcdef";
    const std::size_t start = out.size();
    out += '"';
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        // Copy the longest run that needs no escaping in one go.
        const auto* run = p;
        while (p < end && !kSpecialBytes[*p]) {
            ++p;
        }
        out.append(reinterpret_cast<const char*>(run), static_cast<std::size_t>(p - run));
        if (p == end) {
            break;
        }
        const unsigned char c = *p;
        if (c >= 0x80) {
            const std::size_t n = utf8SequenceLength(p, end);
            if (n == 0) {
                out.resize(start);
                // Throws nlohmann's type_error 316 with its usual message.
                out += nlohmann::json(std::string(text)).dump();
                return;
            }
            out.append(reinterpret_cast<const char*>(p), n);
            p += n;
            continue;
        }
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\b':
            out += "\\b";
            break;
        case '\f':
            out += "\\f";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            out += "\\u00";
            out += kHex[c >> 4];
            out += kHex[c & 0x0F];
            break;
        }
        ++p;
    }
    out += '"';
}

void appendValue(std::string& out, const std::string& value) {
    appendString(out, value);
}

void appendValue(std::string& out, std::int64_t value) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void appendValue(std::string& out, bool value) {
    out += value ? "true" : "false";
}

void appendBase64(std::string& out, const Bytes& bytes) {
    const std::size_t start = out.size();
    out.resize(start + (bytes.size() + 2) / 3 * 4);
    char* p = out.data() + start;
    std::size_t i = 0;
    for (; i + 3 <= bytes.size(); i += 3) {
        const std::uint32_t v =
            (std::uint32_t{bytes[i]} << 16) | (std::uint32_t{bytes[i + 1]} << 8) | bytes[i + 2];
        *p++ = kBase64Alphabet[(v >> 18) & 63];
        *p++ = kBase64Alphabet[(v >> 12) & 63];
        *p++ = kBase64Alphabet[(v >> 6) & 63];
        *p++ = kBase64Alphabet[v & 63];
    }
    const std::size_t rest = bytes.size() - i;
    if (rest != 0) {
        std::uint32_t v = std::uint32_t{bytes[i]} << 16;
        if (rest == 2) {
            v |= std::uint32_t{bytes[i + 1]} << 8;
        }
        *p++ = kBase64Alphabet[(v >> 18) & 63];
        *p++ = kBase64Alphabet[(v >> 12) & 63];
        *p++ = rest == 2 ? kBase64Alphabet[(v >> 6) & 63] : '=';
        *p++ = '=';
    }
}

void appendValue(std::string& out, const Bytes& value) {
    out += '"';
    appendBase64(out, value);
    out += '"';
}

constexpr std::size_t kFieldCount = std::tuple_size_v<decltype(EventFields::fields())>;

/// The text before each member's value: '{' or ',' and the quoted name with its ':'. The names
/// are plain ASCII, so quoting them needs no escapes.
const std::array<std::string, kFieldCount>& memberKeys() {
    static const auto keys = [] {
        std::array<std::string, kFieldCount> out;
        std::size_t i = 0;
        std::apply(
            [&](const auto&... field) {
                ((out[i] = std::string(i == 0 ? "{\"" : ",\"") + std::string(field.name) + "\":",
                  ++i),
                 ...);
            },
            EventFields::fields());
        return out;
    }();
    return keys;
}

/// The three reserved members, last in field order, as the widget data writes them: blank.
constexpr std::size_t kReservedFields = 3;
static_assert(std::get<kFieldCount - 3>(EventFields::fields()).name == "backupDataType01");
static_assert(std::get<kFieldCount - 2>(EventFields::fields()).name == "backupDataType02");
static_assert(std::get<kFieldCount - 1>(EventFields::fields()).name == "backupDataType03");
constexpr std::string_view kBlankReserved =
    ",\"backupDataType01\":0,\"backupDataType02\":\"\",\"backupDataType03\":\"\"}";

/// About the length of an event's text, so that the output grows once.
std::size_t estimatedLength(const EventFields& event) {
    std::size_t length = 1;
    for (const auto& key : memberKeys()) {
        length += key.size();
    }
    const auto add = [&](const auto& field) {
        const auto& value = event.*(field.member);
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::string>) {
            length += value.size() + 2;
        } else if constexpr (std::is_same_v<T, Bytes>) {
            length += (value.size() + 2) / 3 * 4 + 2;
        } else {
            length += 20;
        }
    };
    std::apply([&](const auto&... field) { (add(field), ...); }, EventFields::fields());
    return length;
}

/// Appends the event's object; with `blankReserved`, the reserved members are written as 0, ""
/// and "" whatever the event holds.
template <bool blankReserved> void appendEvent(std::string& out, const EventFields& event) {
    const auto& keys = memberKeys();
    constexpr std::size_t written = blankReserved ? kFieldCount - kReservedFields : kFieldCount;
    const auto appendMembers = [&]<std::size_t... I>(std::index_sequence<I...>) {
        constexpr auto fields = EventFields::fields();
        ((out += keys[I], appendValue(out, event.*(std::get<I>(fields).member))), ...);
    };
    appendMembers(std::make_index_sequence<written>{});
    if constexpr (blankReserved) {
        out += kBlankReserved;
    } else {
        out += '}';
    }
}

template <bool blankReserved, class Event>
std::string encodeArray(const std::vector<Event>& events) {
    std::size_t length = 2;
    for (const auto& event : events) {
        length += estimatedLength(event) + 1;
    }
    std::string out;
    out.reserve(length);
    out += '[';
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (i != 0) {
            out += ',';
        }
        appendEvent<blankReserved>(out, events[i]);
    }
    out += ']';
    return out;
}

// Decoding --------------------------------------------------------------------------------------

using Json = nlohmann::json;

/// Reads one member into `target`; the text says what is wrong with it.
std::optional<std::string> readValue(const Json& value, std::string& target) {
    if (!value.is_string()) {
        return std::string("expected a string, found ") + value.type_name();
    }
    target = value.get_ref<const std::string&>();
    return std::nullopt;
}

std::optional<std::string> readValue(const Json& value, std::int64_t& target) {
    if (value.is_number_unsigned()) {
        const auto raw = value.get<std::uint64_t>();
        if (raw > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
            return std::string("the integer is out of the 64-bit range");
        }
        target = static_cast<std::int64_t>(raw);
        return std::nullopt;
    }
    if (value.is_number_integer()) {
        target = value.get<std::int64_t>();
        return std::nullopt;
    }
    if (value.is_number_float()) {
        return std::string("expected an integer without a fraction");
    }
    return std::string("expected an integer, found ") + value.type_name();
}

std::optional<std::string> readValue(const Json& value, bool& target) {
    if (!value.is_boolean()) {
        return std::string("expected true or false, found ") + value.type_name();
    }
    target = value.get<bool>();
    return std::nullopt;
}

std::optional<std::string> readValue(const Json& value, Bytes& target) {
    if (!value.is_string()) {
        return std::string("expected a Base64 string, found ") + value.type_name();
    }
    auto bytes = base64Decode(value.get_ref<const std::string&>());
    if (!bytes) {
        return std::string("the string is not valid Base64");
    }
    target = std::move(*bytes);
    return std::nullopt;
}

/// Reads all 32 members of one element; the text names the member and what is wrong.
std::optional<std::string> readEvent(const Json& element, EventFields& event) {
    if (!element.is_object()) {
        return std::string("expected an object, found ") + element.type_name();
    }
    std::optional<std::string> error;
    const auto readField = [&](const auto& field) {
        if (error) {
            return;
        }
        const std::string name(field.name);
        const auto found = element.find(name);
        if (found == element.end()) {
            error = "member \"" + name + "\" is missing";
        } else if (auto problem = readValue(*found, event.*(field.member))) {
            error = "member \"" + name + "\": " + *problem;
        }
    };
    std::apply([&](const auto&... field) { (readField(field), ...); }, EventFields::fields());
    return error;
}

template <class Event>
std::optional<std::vector<Event>> decodeArray(std::string_view json, JsonDecodeError* error) {
    const auto fail = [&](std::string message) -> std::optional<std::vector<Event>> {
        if (error != nullptr) {
            error->message = std::move(message);
        }
        return std::nullopt;
    };
    Json document;
    try {
        document = Json::parse(json.begin(), json.end());
    } catch (const Json::exception& e) {
        return fail(std::string("invalid JSON: ") + e.what());
    }
    if (!document.is_array()) {
        return fail(std::string("expected an array at the top level, found ") +
                    document.type_name());
    }
    std::vector<Event> events;
    events.reserve(document.size());
    for (std::size_t i = 0; i < document.size(); ++i) {
        Event event;
        if (auto problem = readEvent(document[i], event)) {
            return fail("element " + std::to_string(i) + ": " + *problem);
        }
        events.push_back(std::move(event));
    }
    return events;
}

} // namespace

std::string base64Encode(const Bytes& bytes) {
    std::string out;
    appendBase64(out, bytes);
    return out;
}

std::optional<Bytes> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    std::size_t padding = 0;
    if (!text.empty() && text.back() == '=') {
        padding = text[text.size() - 2] == '=' ? 2 : 1;
    }
    const std::size_t digits = text.size() - padding;
    Bytes out;
    out.reserve(text.size() / 4 * 3);
    std::uint32_t buffer = 0;
    int bits = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        const std::int8_t v = kBase64Values[static_cast<unsigned char>(text[i])];
        if (v < 0) {
            return std::nullopt; // outside the alphabet, or '=' before the end
        }
        buffer = (buffer << 6) | static_cast<std::uint32_t>(v);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            out.push_back(static_cast<std::uint8_t>(buffer >> bits));
            buffer &= (1u << bits) - 1;
        }
    }
    // The bits left over in the last group are dropped, as the platform's decoder does.
    return out;
}

std::string encodeEventArray(const std::vector<eventObject>& events) {
    return encodeArray<false>(events);
}

std::string encodeEventArray(const std::vector<eventObjectAtWidget>& events) {
    return encodeArray<false>(events);
}

std::string encodeEventArrayWithBlankReserved(const std::vector<eventInfo>& events) {
    return encodeArray<true>(events);
}

std::string encodeEvent(const EventFields& event) {
    std::string out;
    out.reserve(estimatedLength(event));
    appendEvent<false>(out, event);
    return out;
}

std::optional<std::vector<eventObject>> decodeEventArray(std::string_view json,
                                                         JsonDecodeError* error) {
    return decodeArray<eventObject>(json, error);
}

std::optional<std::vector<eventObjectAtWidget>> decodeWidgetEventArray(std::string_view json,
                                                                       JsonDecodeError* error) {
    return decodeArray<eventObjectAtWidget>(json, error);
}

} // namespace tidemark
