// Writes the seed corpus of the day-list archive fuzzer: archives made by the writer, from the
// empty list to the longest one the reader accepts (99,000 elements), one file each.
#include "records/DayListArchive.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

using namespace tidemark;

namespace {

std::vector<std::int64_t> repeated(std::size_t length, std::int64_t distinct, std::int64_t first) {
    std::vector<std::int64_t> list(length);
    for (std::size_t i = 0; i < length; ++i) {
        list[i] = first + static_cast<std::int64_t>(i) % distinct;
    }
    return list;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
    const std::vector<std::pair<std::string, std::vector<std::int64_t>>> seeds = {
        {"empty", {}},
        {"month-days", {1, 15, 31, 99}},
        {"weekdays-shared", {1, 2, 1, 2, 7}},
        {"extremes", {kMin, -1, 0, 255, 256, 65536, 4294967296, kMax}},
        {"month-days-1000", repeated(1000, 31, 1)},
        {"wide-values-10000", repeated(10'000, 500, -250)},
        {"month-days-99000", repeated(99'000, 31, 1)},
    };
    for (const auto& [name, list] : seeds) {
        const Bytes archive = encodeDayListArchive(list);
        std::ofstream out(folder / name, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(archive.data()),
                  static_cast<std::streamsize>(archive.size()));
        if (!out) {
            std::fprintf(stderr, "%s: can't write %s\n", argv[0], (folder / name).c_str());
            return 1;
        }
    }
    return 0;
}
