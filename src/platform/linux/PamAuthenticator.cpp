#include "platform/linux/PamAuthenticator.h"

#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <optional>
#include <pwd.h>
#include <security/pam_appl.h>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace tidemark {

namespace {

constexpr const char* kDialogueKey = "dialogue";

/// The login name of the account running this process, "" when the system doesn't know it.
std::string currentUserName() {
    long size = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(size > 0 ? static_cast<std::size_t>(size) : 16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found ||
        !found->pw_name) {
        return {};
    }
    return found->pw_name;
}

/// Overwrites a secret before its memory is given back.
void wipe(std::string& secret) {
    explicit_bzero(secret.data(), secret.size());
    secret.clear();
}

/// True when every authentication line of the service file only denies (pam_deny.so), as the
/// fallback "other" does on systems that refuse unknown services.
bool onlyDeniesAuthentication(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string line;
    bool any = false;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        std::string type, control, module;
        if (!(words >> type) || (type != "auth" && type != "-auth")) {
            continue;
        }
        words >> control;
        if (control.starts_with('[')) {
            // A bracketed control may hold spaces: skip to its end.
            while (!control.ends_with(']') && (words >> control)) {
            }
        }
        words >> module;
        any = true;
        if (!module.ends_with("pam_deny.so")) {
            return false;
        }
    }
    return any;
}

} // namespace

std::vector<std::filesystem::path> defaultPamConfigDirs() {
    return {"/etc/pam.d", "/usr/lib/pam.d"};
}

bool pamServiceConfigured(const std::string& service,
                          const std::vector<std::filesystem::path>& configDirs) {
    std::error_code error;
    for (const auto& dir : configDirs) {
        if (std::filesystem::is_regular_file(dir / service, error)) {
            return true;
        }
    }
    for (const auto& dir : configDirs) {
        if (std::filesystem::is_regular_file(dir / "other", error)) {
            return !onlyDeniesAuthentication(dir / "other");
        }
    }
    return false;
}

/// What the authenticating thread and the window share. The thread holds it too, so the
/// authenticator may go while PAM still works.
struct PamAuthenticator::State {
    mutable std::mutex mutex;
    std::condition_variable answered;
    AuthenticationDialogue dialogue;
    std::optional<std::string> pendingAnswer;
    bool cancelled = false;
    ObserverList observers;

    void changed() const { observers.notify(kDialogueKey); }

    /// Shows `prompt` and waits for the window's answer; nothing when cancelled.
    std::optional<std::string> ask(const char* prompt, bool secret) {
        std::unique_lock lock(mutex);
        if (cancelled) {
            return std::nullopt;
        }
        dialogue.prompt = prompt ? prompt : "";
        dialogue.secret = secret;
        pendingAnswer.reset();
        lock.unlock();
        changed();
        lock.lock();
        answered.wait(lock, [this] { return pendingAnswer.has_value() || cancelled; });
        std::optional<std::string> result;
        if (!cancelled) {
            result = std::move(pendingAnswer);
        } else if (pendingAnswer) {
            wipe(*pendingAnswer);
        }
        pendingAnswer.reset();
        dialogue.prompt.clear();
        dialogue.secret = false;
        lock.unlock();
        changed();
        return result;
    }

    void tell(const char* text, bool error) {
        {
            std::lock_guard lock(mutex);
            (error ? dialogue.error : dialogue.info) = text ? text : "";
        }
        changed();
    }

    /// PAM's conversation function: questions go to the window, texts are shown there.
    static int converse(int count, const pam_message** messages, pam_response** responses,
                        void* data) {
        if (count <= 0 || count > PAM_MAX_NUM_MSG || !responses) {
            return PAM_CONV_ERR;
        }
        auto* state = static_cast<State*>(data);
        auto* replies = static_cast<pam_response*>(std::calloc(count, sizeof(pam_response)));
        if (!replies) {
            return PAM_BUF_ERR;
        }
        auto fail = [&](int code) {
            for (int i = 0; i < count; ++i) {
                if (replies[i].resp) {
                    explicit_bzero(replies[i].resp, std::strlen(replies[i].resp));
                    std::free(replies[i].resp);
                }
            }
            std::free(replies);
            return code;
        };
        for (int i = 0; i < count; ++i) {
            const pam_message* message = messages[i];
            switch (message->msg_style) {
            case PAM_PROMPT_ECHO_OFF:
            case PAM_PROMPT_ECHO_ON: {
                auto text = state->ask(message->msg, message->msg_style == PAM_PROMPT_ECHO_OFF);
                if (!text) {
                    return fail(PAM_CONV_ERR);
                }
                replies[i].resp = strdup(text->c_str());
                wipe(*text);
                if (!replies[i].resp) {
                    return fail(PAM_BUF_ERR);
                }
                break;
            }
            case PAM_TEXT_INFO:
                state->tell(message->msg, false);
                break;
            case PAM_ERROR_MSG:
                state->tell(message->msg, true);
                break;
            default:
                return fail(PAM_CONV_ERR);
            }
        }
        *responses = replies;
        return PAM_SUCCESS;
    }
};

PamAuthenticator::PamAuthenticator(std::string service,
                                   std::vector<std::filesystem::path> configDirs)
    : service_(std::move(service)), configDirs_(std::move(configDirs)),
      state_(std::make_shared<State>()) {}

PamAuthenticator::~PamAuthenticator() {
    cancel();
}

bool PamAuthenticator::canEvaluate() {
    return !currentUserName().empty() && pamServiceConfigured(service_, configDirs_);
}

void PamAuthenticator::evaluate(const std::string& reason, std::function<void(bool)> reply) {
    bool started = false;
    {
        std::lock_guard lock(state_->mutex);
        if (!state_->dialogue.running) {
            state_->dialogue = AuthenticationDialogue{};
            state_->dialogue.running = true;
            state_->dialogue.reason = reason;
            state_->cancelled = false;
            state_->pendingAnswer.reset();
            std::thread(authenticate, state_, service_, std::move(reply)).detach();
            started = true;
        }
    }
    if (started) {
        state_->changed();
    } else if (reply) {
        // Another authentication is running: this request fails, that one goes on.
        reply(false);
    }
}

void PamAuthenticator::authenticate(std::shared_ptr<State> state, std::string service,
                                    std::function<void(bool)> reply) {
    bool success = false;
    const std::string user = currentUserName();
    const pam_conv conversation{&State::converse, state.get()};
    pam_handle_t* handle = nullptr;
    if (!user.empty() &&
        pam_start(service.c_str(), user.c_str(), &conversation, &handle) == PAM_SUCCESS) {
        int result = pam_authenticate(handle, 0);
        if (result == PAM_SUCCESS) {
            result = pam_acct_mgmt(handle, 0);
        }
        success = result == PAM_SUCCESS;
        pam_end(handle, result);
    }
    // The reply comes first, so that a window that sees the attempt end already sees its
    // outcome.
    if (reply) {
        reply(success);
    }
    {
        // The texts of this attempt stay until the next one starts.
        std::lock_guard lock(state->mutex);
        state->dialogue.running = false;
        state->dialogue.prompt.clear();
        state->dialogue.secret = false;
    }
    state->changed();
}

AuthenticationDialogue PamAuthenticator::dialogue() const {
    std::lock_guard lock(state_->mutex);
    return state_->dialogue;
}

ObservationToken PamAuthenticator::observeDialogue(std::function<void()> onChange,
                                                   Dispatcher dispatcher) {
    return state_->observers.add(kDialogueKey, std::move(onChange), std::move(dispatcher));
}

void PamAuthenticator::answer(const std::string& text) {
    {
        std::lock_guard lock(state_->mutex);
        if (state_->dialogue.prompt.empty() || state_->pendingAnswer) {
            return;
        }
        state_->pendingAnswer = text;
    }
    state_->answered.notify_all();
}

void PamAuthenticator::cancel() {
    {
        std::lock_guard lock(state_->mutex);
        if (!state_->dialogue.running) {
            return;
        }
        state_->cancelled = true;
    }
    state_->answered.notify_all();
}

} // namespace tidemark
