// The file behind the Linux notification centre: the one-shot reminder requests that wait for
// their time and the background refresh that waits for its earliest begin date. The app writes
// it, the tidemark-agent reads it and delivers; both may have it open at once (SQLite, WAL).
// Times here are real wall-clock seconds since 1970, never the calendar layer's fixed clock: a
// request filed with a delay of 60 s fires 60 s after it was filed, whatever "now" the planner saw.
#pragma once

#include "notifications/NotificationCenter.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tidemark {

/// A request with the moment it falls due.
struct PendingRequest {
    NotificationRequest request;
    double fireAt = 0; ///< seconds since 1970
    /// Which filing this is: a request filed again under the same identifier gets a new one.
    std::int64_t filed = 0;

    bool operator==(const PendingRequest&) const = default;
};

/// Thrown when the file can't be opened, read or written; the text says what failed.
class PendingRequestsError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The seconds since 1970 of the system clock (not the calendar layer's clock).
double wallClockNow();

class PendingRequests {
public:
    /// $XDG_DATA_HOME/tidemark/notifications.sqlite
    static std::filesystem::path defaultPath();

    /// Opens (and if need be creates) the file; throws PendingRequestsError.
    explicit PendingRequests(std::filesystem::path path = defaultPath());
    ~PendingRequests();
    PendingRequests(const PendingRequests&) = delete;
    PendingRequests& operator=(const PendingRequests&) = delete;

    /// Files `request` to fire `request.delaySeconds` after `filedAt`. A pending request with
    /// the same identifier is replaced.
    void add(const NotificationRequest& request, double filedAt);
    void remove(const std::vector<std::string>& identifiers);
    void removeAll();
    /// Every pending request, the earliest first (ties in filing order).
    std::vector<PendingRequest> pending() const;
    /// The requests due at `now`, the earliest first. They stay in the file until the agent
    /// removes them with removeDelivered, once a notification server has taken them.
    std::vector<PendingRequest> due(double now) const;
    /// Removes requests a notification server has taken, in one transaction: those filings only,
    /// so that a request filed meanwhile under the same identifier stays. Answers how many were
    /// still there.
    std::size_t removeDelivered(const std::vector<PendingRequest>& delivered);
    /// One planning run, in one write transaction that no other process's run or change
    /// interleaves with: answers `plan` (which may read the records; they are read under the
    /// lock) and replaces every request still to come with its requests, filed at the moment
    /// `plan` answered. Requests already due stay: they wait for the agent, and a plan never
    /// files them again.
    void replaceAll(const std::function<std::vector<NotificationRequest>()>& plan);

    /// The background refresh: one request per identifier; a submission replaces the earlier.
    void submitBackgroundTask(const BackgroundTaskRequest& request);
    void cancelAllBackgroundTasks();
    std::vector<BackgroundTaskRequest> backgroundTasks() const;
    /// Removes and answers the background tasks whose earliest begin date has come.
    std::vector<BackgroundTaskRequest> takeDueBackgroundTasks(double now);

    /// The next moment after `now` that something falls due (request or background task), if
    /// anything waits. What is due already is being delivered or waits for a notification
    /// server, not for the clock.
    std::optional<double> nextWakeAfter(double now) const;

    /// Whether the app has asked for permission to notify (before that, it is "not determined").
    bool authorizationRequested() const;
    void setAuthorizationRequested();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tidemark
