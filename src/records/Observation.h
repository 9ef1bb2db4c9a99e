// Change notification shared by the store's live results and the defaults store.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tidemark {

/// Decides where an observer's callback runs. The default runs it at once on the thread that
/// committed the change; a UI layer passes one that queues it to its own thread.
using Dispatcher = std::function<void(std::function<void()>)>;

/// Keeps an observation alive; dropping it (or calling cancel) stops the callbacks. After
/// cancel() returns, no callback of this observation starts any more.
class ObservationToken {
public:
    ObservationToken() = default;
    explicit ObservationToken(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    ObservationToken(ObservationToken&& other) noexcept : cancel_(std::move(other.cancel_)) {
        other.cancel_ = nullptr;
    }
    ObservationToken& operator=(ObservationToken&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::move(other.cancel_);
            other.cancel_ = nullptr;
        }
        return *this;
    }
    ObservationToken(const ObservationToken&) = delete;
    ObservationToken& operator=(const ObservationToken&) = delete;
    ~ObservationToken() { cancel(); }

    void cancel() {
        if (cancel_) {
            auto c = std::move(cancel_);
            cancel_ = nullptr;
            c();
        }
    }
    explicit operator bool() const { return static_cast<bool>(cancel_); }

private:
    std::function<void()> cancel_;
};

/// Observers grouped by a key (a settings key, a store table), safe to use from any thread. A
/// callback runs through its observer's dispatcher, never under the list's lock, so it may
/// register, cancel or cause another notification. Cancelling waits for a running callback of
/// the same observation on another thread; the observation may cancel itself from its callback.
/// Tokens stay safe to drop after the list is gone.
class ObserverList {
public:
    ObserverList();
    ObservationToken add(std::string key, std::function<void()> onChange, Dispatcher dispatcher);
    /// Calls every observer of `key`, each through its dispatcher.
    void notify(std::string_view key) const;

private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace tidemark
