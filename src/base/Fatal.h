// Fatal stops: the program's answer to a failure it treats as impossible (a store that does not
// open, a required value that is missing, an arithmetic overflow). The message is printed to
// standard error exactly as given and the process aborts. Every store write is one SQLite
// transaction, so what was committed before the stop survives it.
#pragma once

#include <cstdint>
#include <string_view>

namespace tidemark {

inline constexpr std::string_view kNilMessage =
    "Unexpectedly found nil while unwrapping an Optional value";
inline constexpr std::string_view kOverflowMessage = "Arithmetic overflow";
inline constexpr std::string_view kDivisionByZeroMessage = "Division by zero";

[[noreturn]] void fatalStop(std::string_view message);

/// Unwraps an optional, stopping with kNilMessage when it is empty.
template <class Optional> decltype(auto) unwrap(Optional&& value) {
    if (!value) {
        fatalStop(kNilMessage);
    }
    return *std::forward<Optional>(value);
}

/// Checked 64-bit arithmetic: overflow is a fatal stop, never undefined behaviour.
std::int64_t checkedAdd(std::int64_t a, std::int64_t b);
std::int64_t checkedSub(std::int64_t a, std::int64_t b);
std::int64_t checkedMul(std::int64_t a, std::int64_t b);
/// Integer division cut towards zero; a zero divisor stops with kDivisionByZeroMessage.
std::int64_t checkedDiv(std::int64_t a, std::int64_t b);
/// A double cut towards zero to an integer; non-finite or out-of-range values stop.
std::int64_t truncatingToInt(double value);

} // namespace tidemark
