// The private cloud database behind backup and per-record sync. The store's changes reach it
// through addEditAndDelDataAtCloud, and the launch check through cloudKitFunc; the WebDAV service
// installs itself with setCloudDatabase. Until one is installed, the unavailable database drops
// every transfer and says so once on standard error.
#pragma once

#include "records/eventInfo.h"

#include <memory>
#include <string>

namespace tidemark {

class CloudDatabase {
public:
    virtual ~CloudDatabase() = default;
    virtual void saveEventRecord(const eventInfo& event) = 0;
    virtual void deleteEventRecord(const std::string& eventId) = 0;
    virtual void saveMemoRecord(const memoDataForNotiObject& memo) = 0;
    virtual void deleteMemoRecord(const std::string& memoId) = 0;
    /// Starts the deferred account, identity and zone check; returns at once.
    virtual void startDeferredStatusCheck() = 0;
};

/// The installed database (never null).
CloudDatabase& cloudDatabase();
void setCloudDatabase(std::shared_ptr<CloudDatabase> database);

/// Per-record sync after a store change, started and not awaited.
class addEditAndDelDataAtCloud {
public:
    void deleteEventRecordAtCloud(const std::string& eventId) {
        cloudDatabase().deleteEventRecord(eventId);
    }
    void saveEventRecordAtCloud(const eventInfo& event) { cloudDatabase().saveEventRecord(event); }
    void deleteMemoRecordAtCloud(const std::string& memoId) {
        cloudDatabase().deleteMemoRecord(memoId);
    }
    void saveMemoRecordAtCloud(const memoDataForNotiObject& memo) {
        cloudDatabase().saveMemoRecord(memo);
    }
};

/// Whether the cloud function may run on this device; its findings go to settings.
class cloudKitFunc {
public:
    void startDeferredStatusCheck() { cloudDatabase().startDeferredStatusCheck(); }
};

} // namespace tidemark
