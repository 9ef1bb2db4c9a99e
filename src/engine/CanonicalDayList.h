// A quick reader for the usual form of a week or month list: the keyed archive that the phone
// platform's archiver and encodeDayListArchive write for an array of integers. It accepts that
// one layout only, checked byte by byte, and reads nothing else; for any other bytes it has no
// answer and the full reader (readDayListArchive) must be asked. Where it answers, the answer is
// the full reader's.
#pragma once

#include "records/eventInfo.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tidemark {

std::optional<std::vector<std::int64_t>> readCanonicalDayList(const Bytes& archive);

} // namespace tidemark
