// tidemark-archive-bench: how the day-list archive reader's time grows with the list's length.
// Encodes lists of 1,000, 10,000 and 99,000 day numbers (the longest list within the reader's
// limits), decodes each several times and prints the median decode time, the time per element
// and the growth against the 1,000-element list. A linear reader keeps the time per element flat,
// so the growth stays near the length ratio (10x, 99x).
#include "records/DayListArchive.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <vector>

using namespace tidemark;

namespace {

using Clock = std::chrono::steady_clock;

double medianDecodeMillis(const Bytes& archive, const std::vector<std::int64_t>& expected,
                          bool& identical) {
    const int runs = 5;
    std::vector<double> times;
    identical = true;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        const auto values = decodeDayListArchive(archive);
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        identical = identical && values == expected;
    }
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

} // namespace

int main() {
    std::printf("# tidemark-archive-bench: day-list archives of the month days 1..31 repeated, "
                "median of 5 decodes\n");
    double baseMs = 0;
    std::size_t baseLength = 0;
    for (const std::size_t length : {std::size_t{1000}, std::size_t{10'000}, std::size_t{99'000}}) {
        std::vector<std::int64_t> values(length);
        for (std::size_t i = 0; i < length; ++i) {
            values[i] = static_cast<std::int64_t>(i % 31 + 1);
        }
        const auto encodeStart = Clock::now();
        const Bytes archive = encodeDayListArchive(values);
        const double encodeMs =
            std::chrono::duration<double, std::milli>(Clock::now() - encodeStart).count();
        bool identical = false;
        const double decodeMs = medianDecodeMillis(archive, values, identical);
        if (baseLength == 0) {
            baseMs = decodeMs;
            baseLength = length;
        }
        std::printf(
            "day-list-archive N=%zu: %zu bytes, encode %.2f ms, decode %.2f ms, %.0f ns per "
            "element, decode time %.0fx that of N=%zu (length %.0fx), read back "
            "identical: %s\n",
            length, archive.size(), encodeMs, decodeMs, decodeMs * 1e6 / length,
            baseMs > 0 ? decodeMs / baseMs : 0.0, baseLength,
            static_cast<double>(length) / baseLength, identical ? "yes" : "NO");
        std::fflush(stdout);
    }
    return 0;
}
