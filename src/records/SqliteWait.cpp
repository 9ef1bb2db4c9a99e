#include "records/SqliteWait.h"

#include <chrono>
#include <cstdint>
#include <random>
#include <sqlite3.h>
#include <thread>

namespace tidemark {

namespace {

using Clock = std::chrono::steady_clock;

void pauseBriefly() {
    thread_local std::minstd_rand random(std::random_device{}());
    std::this_thread::sleep_for(std::chrono::microseconds(200 + random() % 800));
}

/// The busy handler: `count` is 0 on the first call for each lock a statement waits for. A
/// statement runs on one thread and waits for one lock at a time, so the thread's own start time
/// is that wait's.
int busyHandler(void* timeoutMs, int count) {
    thread_local Clock::time_point start;
    if (count == 0) {
        start = Clock::now();
    }
    const auto limit = std::chrono::milliseconds(reinterpret_cast<std::intptr_t>(timeoutMs));
    if (Clock::now() - start >= limit) {
        return 0;
    }
    pauseBriefly();
    return 1;
}

} // namespace

void waitWhenBusy(sqlite3* db, int timeoutMs) {
    sqlite3_busy_handler(db, busyHandler, reinterpret_cast<void*>(std::intptr_t{timeoutMs}));
}

int enterWalMode(sqlite3* db, int timeoutMs) {
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        const int rc = sqlite3_exec(db, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
        if ((rc & 0xFF) != SQLITE_BUSY || Clock::now() >= deadline) {
            return rc;
        }
        pauseBriefly();
    }
}

} // namespace tidemark
