// libFuzzer target for the day-list archive reader. Any bytes up to the reader's 1 MiB limit must
// read without a crash or a sanitizer report, and quickly (libFuzzer's -timeout stops on a slow
// input); a list that reads must come back unchanged through the writer and the reader. How to
// build and run it: tests/fuzz/CMakeLists.txt.
#include "records/DayListArchive.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const tidemark::Bytes archive(data, data + size);
    const auto read = tidemark::readDayListArchive(archive);
    if (read.error) {
        if (!read.values.empty()) {
            std::abort(); // an error never comes with a list
        }
        return 0;
    }
    const auto again = tidemark::readDayListArchive(tidemark::encodeDayListArchive(read.values));
    if (again.error || again.values != read.values) {
        std::abort();
    }
    return 0;
}
