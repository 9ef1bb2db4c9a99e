// Device owner authentication through PAM: the service "tidemark" (installed as
// /etc/pam.d/tidemark, which includes the system's common-auth and common-account, so it asks
// what the session's login asks: a password, a fingerprint where the stack has pam_fprintd) for
// the account running the app. Each authentication runs on a thread of its own; PAM's
// conversation becomes the dialogue the window shows and answers.
#pragma once

#include "records/DeviceOwnerAuthenticator.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tidemark {

/// Where PAM looks for service files: /etc/pam.d, then the vendor folder /usr/lib/pam.d.
std::vector<std::filesystem::path> defaultPamConfigDirs();

/// Whether PAM can answer for `service` with the files in `configDirs`: the service's own file,
/// or else the fallback "other" unless all it does for authentication is deny.
bool pamServiceConfigured(const std::string& service,
                          const std::vector<std::filesystem::path>& configDirs);

class PamAuthenticator final : public DeviceOwnerAuthenticator {
public:
    explicit PamAuthenticator(
        std::string service = "tidemark",
        std::vector<std::filesystem::path> configDirs = defaultPamConfigDirs());
    /// Cancels a running authentication; its thread ends on its own once PAM returns.
    ~PamAuthenticator() override;

    /// True when the running account is known and PAM has a configuration that can answer.
    bool canEvaluate() override;
    /// One authentication at a time: while one runs, another request fails at once.
    void evaluate(const std::string& reason, std::function<void(bool success)> reply) override;
    AuthenticationDialogue dialogue() const override;
    ObservationToken observeDialogue(std::function<void()> onChange,
                                     Dispatcher dispatcher) override;
    void answer(const std::string& text) override;
    void cancel() override;

    struct State;

private:
    static void authenticate(std::shared_ptr<State> state, std::string service,
                             std::function<void(bool)> reply);

    std::string service_;
    std::vector<std::filesystem::path> configDirs_;
    std::shared_ptr<State> state_;
};

} // namespace tidemark
