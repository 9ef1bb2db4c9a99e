// The installed cloud service and main queue, and the stand-ins used until a program installs its
// own: a service that refuses every call and a queue that runs work on detached threads.
#include "cloud/CloudService.h"

#include <chrono>
#include <mutex>
#include <thread>

namespace tidemark {

const CloudValue* CloudRecord::field(std::string_view key) const {
    for (const auto& [name, value] : fields) {
        if (name == key) {
            return &value;
        }
    }
    return nullptr;
}

namespace {

/// Answers every call with an error, on a thread of its own and never inside the call, as a
/// real service would answer when it can't reach the server.
class UnavailableCloudService final : public CloudService {
public:
    void accountStatus(
        std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(CloudAccountStatus::couldNotDetermine, error()); });
    }
    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(std::nullopt, error()); });
    }
    void fetchZone(
        const std::string&,
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(std::nullopt, error()); });
    }
    void saveZone(const std::string&,
                  std::function<void(std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(error()); });
    }
    void fetchRecord(
        const CloudRecordId&,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(std::nullopt, error()); });
    }
    void saveRecord(const CloudRecord&,
                    std::function<void(std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(error()); });
    }
    void modifyRecords(std::vector<CloudRecord>, std::vector<CloudRecordId>,
                       std::function<void(std::optional<CloudError>)> done) override {
        later([done = std::move(done)] { done(error()); });
    }
    void queryRecords(const std::string&, std::optional<CloudQueryCursor>, std::size_t,
                      std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                         std::optional<CloudError>)>
                          done) override {
        later([done = std::move(done)] { done({}, std::nullopt, error()); });
    }

private:
    static CloudError error() { return {"no cloud service is configured", false}; }
    template <class Work> static void later(Work work) { std::thread(std::move(work)).detach(); }
};

/// Runs each piece of work on a detached thread of its own, after the delay.
class ThreadMainQueue final : public MainQueue {
public:
    void async(std::function<void()> work) override { asyncAfter(0, std::move(work)); }
    void asyncAfter(double seconds, std::function<void()> work) override {
        std::thread([seconds, work = std::move(work)] {
            if (seconds > 0) {
                std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
            }
            work();
        }).detach();
    }
};

std::mutex gMutex;
std::shared_ptr<CloudService> gService;
std::shared_ptr<MainQueue> gQueue;

} // namespace

std::shared_ptr<CloudService> sharedCloudService() {
    std::lock_guard lock(gMutex);
    if (!gService) {
        gService = std::make_shared<UnavailableCloudService>();
    }
    return gService;
}

CloudService& cloudService() {
    return *sharedCloudService();
}

void setCloudService(std::shared_ptr<CloudService> service) {
    std::lock_guard lock(gMutex);
    gService = std::move(service);
}

MainQueue& mainQueue() {
    std::lock_guard lock(gMutex);
    if (!gQueue) {
        gQueue = std::make_shared<ThreadMainQueue>();
    }
    return *gQueue;
}

void setMainQueue(std::shared_ptr<MainQueue> queue) {
    std::lock_guard lock(gMutex);
    gQueue = std::move(queue);
}

} // namespace tidemark
