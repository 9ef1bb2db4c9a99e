#include "records/DeviceOwnerAuthenticator.h"

#include <mutex>

namespace tidemark {

namespace {

/// A system without any way to authenticate its owner: nothing can be evaluated.
class UnavailableDeviceOwnerAuthenticator final : public DeviceOwnerAuthenticator {
public:
    bool canEvaluate() override { return false; }
    void evaluate(const std::string&, std::function<void(bool)> reply) override {
        if (reply) {
            reply(false);
        }
    }
};

std::mutex gMutex;
std::shared_ptr<DeviceOwnerAuthenticator> gAuthenticator;

} // namespace

DeviceOwnerAuthenticator& deviceOwnerAuthenticator() {
    std::lock_guard lock(gMutex);
    if (!gAuthenticator) {
        gAuthenticator = std::make_shared<UnavailableDeviceOwnerAuthenticator>();
    }
    return *gAuthenticator;
}

void setDeviceOwnerAuthenticator(std::shared_ptr<DeviceOwnerAuthenticator> authenticator) {
    std::lock_guard lock(gMutex);
    gAuthenticator = std::move(authenticator);
}

} // namespace tidemark
