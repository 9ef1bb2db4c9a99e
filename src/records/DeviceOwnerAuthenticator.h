// Authentication of the device's owner, the service behind the app lock. The Linux service (PAM)
// installs itself at start-up through setDeviceOwnerAuthenticator; until one is installed the
// unavailable one answers that nobody can be authenticated, so the lock can't be lifted.
//
// An authentication may talk to the user: a question ("Password: ", secret or not) and texts
// ("Place your finger on the reader", errors). Those are kept as the current dialogue, which the
// window observes and shows; the window answers the question or cancels through the same object.
#pragma once

#include "records/Observation.h"

#include <functional>
#include <memory>
#include <string>

namespace tidemark {

/// What the authentication in progress asks and says; all empty when none runs.
struct AuthenticationDialogue {
    bool running = false;
    std::string reason;  ///< why the app asks, as the caller gave it
    std::string prompt;  ///< the question waiting for an answer, "" when none waits
    bool secret = false; ///< the answer to `prompt` must not be shown as typed
    std::string info;    ///< the latest progress text
    std::string error;   ///< the latest error text

    bool operator==(const AuthenticationDialogue&) const = default;
};

class DeviceOwnerAuthenticator {
public:
    virtual ~DeviceOwnerAuthenticator() = default;

    /// Whether an authentication can take place at all on this system.
    virtual bool canEvaluate() = 0;
    /// Starts an authentication that shows `reason`; `reply(success)` comes once, on any thread.
    virtual void evaluate(const std::string& reason, std::function<void(bool success)> reply) = 0;

    /// The dialogue of the authentication in progress.
    virtual AuthenticationDialogue dialogue() const { return {}; }
    /// Calls `onChange` through `dispatcher` whenever dialogue() changes.
    virtual ObservationToken observeDialogue(std::function<void()> /*onChange*/,
                                             Dispatcher /*dispatcher*/) {
        return {};
    }
    /// Answers the waiting question; ignored when none waits. The text is not kept.
    virtual void answer(const std::string& /*text*/) {}
    /// Ends the authentication in progress as failed; nothing when none runs.
    virtual void cancel() {}
};

/// The installed authenticator (never null: the unavailable one stands in).
DeviceOwnerAuthenticator& deviceOwnerAuthenticator();
void setDeviceOwnerAuthenticator(std::shared_ptr<DeviceOwnerAuthenticator> authenticator);

} // namespace tidemark
