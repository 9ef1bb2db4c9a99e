// The week and month lists of an event are stored as keyed archives: NSKeyedArchiver-compatible
// binary property lists whose root object is an array of integers. Archives written by the
// phone platform read here, and ours read there. This is the one pair of functions that reads and
// writes those blobs; everything else treats them as opaque bytes.
#pragma once

#include "records/eventInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

inline constexpr std::string_view kCantEncodeData = "Can't encode data: ";
inline constexpr std::string_view kCantDecodeData = "Can't decode data: ";

/// What reading an archive can give.
struct DayListReadResult {
    /// The integers of the root array; empty for the empty blob and for a readable archive whose
    /// root is not an array of integers.
    std::vector<std::int64_t> values;
    /// Set when the bytes are no keyed archive at all: the reader's error text.
    std::optional<std::string> error;
};

/// Reads an archive without stopping: the result says whether the bytes were an archive.
DayListReadResult readDayListArchive(const Bytes& archive);

/// Reads an archive. Bytes that are no archive are a fatal stop with `failurePrefix` followed by
/// the reader's error text ("Can't encode data: " is the wording of most readers).
std::vector<std::int64_t> decodeDayListArchive(const Bytes& archive,
                                               std::string_view failurePrefix = kCantEncodeData);

/// Writes the integers as a keyed archive of an NSArray of NSNumbers, equal numbers sharing one
/// archived object as the platform's archiver does. A failure of the writer is a fatal stop with
/// "Can't encode data: " and its error text.
Bytes encodeDayListArchive(const std::vector<std::int64_t>& values);

} // namespace tidemark
