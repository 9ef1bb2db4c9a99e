#include "cloud/CloudDatabase.h"

#include <iostream>
#include <mutex>

namespace tidemark {

namespace {

class UnavailableCloudDatabase final : public CloudDatabase {
public:
    void saveEventRecord(const eventInfo&) override { report(); }
    void deleteEventRecord(const std::string&) override { report(); }
    void saveMemoRecord(const memoDataForNotiObject&) override { report(); }
    void deleteMemoRecord(const std::string&) override { report(); }
    void startDeferredStatusCheck() override { report(); }

private:
    void report() {
        std::call_once(once_, [] {
            std::cerr << "tidemark: cloud sync is on, but no cloud database is configured; "
                         "changes stay on this device"
                      << std::endl;
        });
    }
    std::once_flag once_;
};

std::mutex gMutex;
std::shared_ptr<CloudDatabase> gDatabase;

} // namespace

CloudDatabase& cloudDatabase() {
    std::lock_guard lock(gMutex);
    if (!gDatabase) {
        gDatabase = std::make_shared<UnavailableCloudDatabase>();
    }
    return *gDatabase;
}

void setCloudDatabase(std::shared_ptr<CloudDatabase> database) {
    std::lock_guard lock(gMutex);
    gDatabase = std::move(database);
}

} // namespace tidemark
