#include "base/Fatal.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tidemark {

void fatalStop(std::string_view message) {
    std::fwrite(message.data(), 1, message.size(), stderr);
    std::fputc('\n', stderr);
    std::fflush(stderr);
    std::abort();
}

std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    std::int64_t r = 0;
    if (__builtin_add_overflow(a, b, &r)) {
        fatalStop(kOverflowMessage);
    }
    return r;
}

std::int64_t checkedSub(std::int64_t a, std::int64_t b) {
    std::int64_t r = 0;
    if (__builtin_sub_overflow(a, b, &r)) {
        fatalStop(kOverflowMessage);
    }
    return r;
}

std::int64_t checkedMul(std::int64_t a, std::int64_t b) {
    std::int64_t r = 0;
    if (__builtin_mul_overflow(a, b, &r)) {
        fatalStop(kOverflowMessage);
    }
    return r;
}

std::int64_t checkedDiv(std::int64_t a, std::int64_t b) {
    if (b == 0) {
        fatalStop(kDivisionByZeroMessage);
    }
    if (a == INT64_MIN && b == -1) {
        fatalStop(kOverflowMessage);
    }
    return a / b;
}

std::int64_t truncatingToInt(double value) {
    // 2^63 is exactly representable; anything at or beyond it does not fit.
    if (!std::isfinite(value) || value >= 9223372036854775808.0 || value < -9223372036854775808.0) {
        fatalStop("Double value cannot be converted to Int because it is either infinite, NaN or "
                  "outside the representable range");
    }
    return static_cast<std::int64_t>(value);
}

} // namespace tidemark
