// The one way screens change events and memos. A change of an event is never only a write: it is
// the store's transaction, then (when cloud sync is on) the record's transfer to the cloud, then a
// publication of all events to the widgets — always in that order. Made on the spot for one call.
#pragma once

#include "calendar/Calendar.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

class realmDataFunc {
public:
    Setting<bool> cloudkitFuncStatus{"ALL_APP_cloudkitFuncStatus", false};

    /// Diagnostic memo of a background run ("bgTaskInfo", time with seconds); no cloud, no
    /// publication.
    void addBgTaskInfoMemo();
    /// Creates or overwrites the event with that eventId, all 32 fields as given.
    void addEventData(const eventObject& eventData);
    /// addEventData for each event in order, with the writes in one transaction and one
    /// publication after the last (a download's page).
    void addEventsData(const std::vector<eventObject>& events);
    /// Deletes the event, which must exist (a fatal stop otherwise). Its memos stay.
    void deleteEventData(const std::string& eventId);
    /// Rewrites the stored event `eventData.eventId` from `eventData`, except that the field
    /// named `key` takes the argument of its type (absent: a fatal stop). An unknown key rewrites
    /// the record unchanged; a record that no longer exists is not written, but the widgets are
    /// still published.
    void editEventData(const eventInfo& eventData, const std::string& key,
                       std::optional<std::string> stringValue = std::nullopt,
                       std::optional<std::int64_t> intValue = std::nullopt,
                       std::optional<bool> boolValue = std::nullopt,
                       std::optional<Bytes> dataValue = std::nullopt);
    /// Creates or overwrites a memo stamped with `date` as "yyyy-MM-dd / HH:mm".
    void addMemoData(const std::string& eventId, const std::string& memoId,
                     const std::string& title, const std::string& content, Date date);
    /// Deletes the memo if it exists; a missing memo is no failure.
    void deleteMemoData(const std::string& memoId);
};

/// The rows of the day window (appFuncForDateData).
class extensionDataFunc {
public:
    Setting<bool> appLockStatu{"APP_FUNC_appLockStatu", false};
    Setting<bool> appLockSettingFromUser{"APP_FUNC_appLockSettingFromUser", false};
    Results<appFuncForDateData> dateDatas;

    /// Adds one day row: the date composed from `dateComponents` (today if that fails) as
    /// "yyyyMMdd", and the raw year, month and day (0 where absent).
    void addDateData(const DateComponents& dateComponents);
    /// Removes the rows of that day, each in its own transaction.
    void removeDateData(Date date);
    /// Asks the device owner to authenticate and lifts the lock when they do. Returns at once;
    /// where nobody can be authenticated, or when the attempt fails, nothing changes.
    void unlockAppWithDeviceOwner();
};

/// Rebuilds the day window after its range setting changed: deletes every day row, then adds
/// one per day from today, 7, 30 or 365 of them for range 0, 1 or 2 (other values: nothing is
/// added), with the day number raised without normalising.
void rebuildDayRows(std::int64_t range);

} // namespace tidemark
