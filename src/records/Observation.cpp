#include "records/Observation.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

namespace tidemark {

namespace {

/// One observation. The recursive mutex is held while the callback runs, so that cancel() on
/// another thread waits for it, while the callback itself may still cancel its own token or
/// cause another notification on its thread.
struct ObserverState {
    std::recursive_mutex mutex;
    bool alive = true;
    std::function<void()> onChange;
};

struct Observer {
    std::shared_ptr<ObserverState> state;
    Dispatcher dispatcher;
};

void runObserver(const std::shared_ptr<ObserverState>& state) {
    std::lock_guard lock(state->mutex);
    if (state->alive) {
        state->onChange();
    }
}

} // namespace

struct ObserverList::Impl {
    std::mutex mutex;
    std::uint64_t nextId = 1;
    std::map<std::string, std::map<std::uint64_t, Observer>, std::less<>> byKey;
};

ObserverList::ObserverList() : impl_(std::make_shared<Impl>()) {}

ObservationToken ObserverList::add(std::string key, std::function<void()> onChange,
                                   Dispatcher dispatcher) {
    auto state = std::make_shared<ObserverState>();
    state->onChange = std::move(onChange);
    std::uint64_t id = 0;
    {
        std::lock_guard lock(impl_->mutex);
        id = impl_->nextId++;
        impl_->byKey[key].emplace(id, Observer{state, std::move(dispatcher)});
    }
    return ObservationToken(
        [weakImpl = std::weak_ptr<Impl>(impl_), key = std::move(key), id, state] {
            if (auto impl = weakImpl.lock()) {
                std::lock_guard lock(impl->mutex);
                if (auto it = impl->byKey.find(key); it != impl->byKey.end()) {
                    it->second.erase(id);
                    if (it->second.empty()) {
                        impl->byKey.erase(it);
                    }
                }
            }
            // Taken after the list's lock is let go: a running callback holds this one and may need
            // the list (to register, to cancel others, or to notify again).
            std::lock_guard lock(state->mutex);
            state->alive = false;
        });
}

void ObserverList::notify(std::string_view key) const {
    std::vector<Observer> toCall;
    {
        std::lock_guard lock(impl_->mutex);
        if (auto it = impl_->byKey.find(key); it != impl_->byKey.end()) {
            for (const auto& entry : it->second) {
                toCall.push_back(entry.second);
            }
        }
    }
    for (auto& observer : toCall) {
        if (observer.dispatcher) {
            observer.dispatcher([state = observer.state] { runObserver(state); });
        } else {
            runObserver(observer.state);
        }
    }
}

} // namespace tidemark
