// Change notification shared by the store's live results and the defaults store.
#pragma once

#include <functional>
#include <memory>

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

} // namespace tidemark
