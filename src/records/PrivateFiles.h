// The user's data is private: every folder the app makes is 0700 and every file 0600, whatever
// the umask, and the files of an earlier installation are narrowed to 0600 when they are opened.
//
// A settings or reminders file that is not a database (garbage, a damaged or truncated file, a
// folder in its place) is never overwritten: it is moved aside under a name with the moment it
// was found, a fresh file takes its place, and a notice is left for the app to show the user
// once. The notices live in $XDG_DATA_HOME/tidemark/notices, one line per file moved aside, so
// that the agent's finds reach the user too.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace tidemark {

/// Makes `folder` and its missing parents with mode 0700. With `narrow`, an existing `folder`
/// (the app's own) is narrowed to 0700 as well. False when the folder isn't there afterwards.
bool makePrivateFolder(const std::filesystem::path& folder, bool narrow = false);

/// Makes `file` empty with mode 0600 when nothing is at its path; narrows an existing regular
/// file and its SQLite companions (-wal, -shm, -journal) to 0600.
void makePrivateFile(const std::filesystem::path& file);

/// Which of the app's files was moved aside: the text of the notice depends on it.
enum class DamagedFileKind { settings, sharedSettings, reminders };

/// Moves what lies at `path`, with its SQLite companions, aside to
/// "<name>.damaged-<yyyyMMdd-HHmmss>" (a counter is added when the name is taken) and leaves a
/// notice. Returns the new path, or an empty one when nothing could be moved.
std::filesystem::path setAsideDamagedFile(const std::filesystem::path& path, DamagedFileKind kind);

/// Opens the SQLite file at `path` private, checks that it is a database, switches it to WAL
/// and runs `setup` on it (tables). One that isn't is set aside (see above) and a fresh one made.
/// Returns the connection (busy timeout set), or nullptr with `error` when even a fresh file
/// can't be opened.
sqlite3* openPrivateDatabase(const std::filesystem::path& path, DamagedFileKind kind,
                             const char* setup, int busyTimeoutMs, std::string* error);

/// One file moved aside and not yet shown to the user.
struct DamagedFileNotice {
    DamagedFileKind kind = DamagedFileKind::settings;
    std::filesystem::path original;
    std::filesystem::path keptAs;

    bool operator==(const DamagedFileNotice&) const = default;
};

/// $XDG_DATA_HOME/tidemark/notices
std::filesystem::path damagedFileNoticesPath();
/// The notices left so far, oldest first; they are removed, so each is handed out once.
std::vector<DamagedFileNotice> takeDamagedFileNotices();

} // namespace tidemark
