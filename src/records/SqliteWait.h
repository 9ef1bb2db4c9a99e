// Waiting for the other connections to a SQLite file in ways that hold while they keep writing.
// The store, the defaults suites and the reminders file are shared by the app, the agent and
// further instances, so every connection to them should wait this way.
#pragma once

struct sqlite3;

namespace tidemark {

/// Makes `db` wait up to `timeoutMs` for a lock another connection holds, trying again after a
/// random pause of 0.2 to 1 ms each time. sqlite3_busy_timeout's pauses grow to 100 ms: while
/// others keep writing, a waiter that sleeps that long keeps missing the short moments the lock
/// is free, and writers that came after it take it first until its time runs out.
void waitWhenBusy(sqlite3* db, int timeoutMs);

/// Runs "PRAGMA journal_mode=WAL", waiting up to `timeoutMs` while other connections switch the
/// same new file. The switch turns a read into a write inside SQLite, which answers SQLITE_BUSY
/// at once rather than calling the busy handler, so it is tried again here. Returns the SQLite
/// result code.
int enterWalMode(sqlite3* db, int timeoutMs);

} // namespace tidemark
