// The typed defaults store (the platform's user defaults): one SQLite file per suite with the
// table defaults(key TEXT PRIMARY KEY, type TEXT NOT NULL, value), type one of "bool", "int",
// "string", "data". The standard suite lies at $XDG_CONFIG_HOME/tidemark/defaults.sqlite; a named
// suite (the application group shared with the widgets) at $XDG_DATA_HOME/<name>/defaults.sqlite.
//
// A Setting is one declaration of a key with its own default. The default is never stored; every
// declaration of a key shares the stored value; storing a value equal to the default still stores
// it; and every write tells every observer of that key. Safe to use from any thread.
#pragma once

#include "records/Observation.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace tidemark {

using DefaultsValue = std::variant<bool, std::int64_t, std::string, Bytes>;

class DefaultsSuite {
public:
    /// The application's own settings.
    static DefaultsSuite& standard();
    /// A named suite (application group); nullptr when its file can't be opened.
    static DefaultsSuite* named(std::string_view suiteName);
    /// Forgets the suites opened so far, so that the next call follows changed XDG variables or
    /// paths (tests).
    static void resetForTesting();

    explicit DefaultsSuite(std::filesystem::path path);
    ~DefaultsSuite();
    DefaultsSuite(const DefaultsSuite&) = delete;
    DefaultsSuite& operator=(const DefaultsSuite&) = delete;

    /// True when the file could be opened and its table made.
    bool isOpen() const;
    const std::filesystem::path& path() const;

    std::optional<DefaultsValue> value(std::string_view key) const;
    void setValue(std::string_view key, const DefaultsValue& value);
    void removeValue(std::string_view key);
    /// Stores what `compute` gives under `key`, or removes the key when it gives nothing, in one
    /// write transaction begun before `compute` runs. Writers of this suite in every process wait
    /// for it, so a value computed from outside state (the store's events) is never replaced by
    /// one computed earlier. `compute` must not use this suite; if it throws, nothing is written
    /// and the exception passes on. Tells the key's observers like setValue.
    void update(std::string_view key, const std::function<std::optional<DefaultsValue>()>& compute);

    /// Calls `onChange` after every write of `key` in this suite (setValue, removeValue, update).
    ObservationToken observe(std::string key, std::function<void()> onChange,
                             Dispatcher dispatcher = {});

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

std::filesystem::path standardDefaultsPath();
std::filesystem::path suiteDefaultsPath(std::string_view suiteName);

/// Enumerations stored by their String raw value. A type opts in by providing, next to it,
/// `std::string_view rawValue(T)` and `std::optional<T> fromRawValue(std::string_view, T*)`.
template <class T>
concept RawRepresentable = std::is_enum_v<T> && requires(T t, std::string_view s) {
    { rawValue(t) } -> std::convertible_to<std::string_view>;
    { fromRawValue(s, static_cast<T*>(nullptr)) } -> std::same_as<std::optional<T>>;
};

template <class T>
concept SettingValue = std::is_same_v<T, bool> || std::is_same_v<T, std::int64_t> ||
    std::is_same_v<T, std::string> || std::is_same_v<T, Bytes> || RawRepresentable<T>;

/// One declaration of a settings key with its own default (`AppStorage`).
template <SettingValue T> class Setting {
public:
    Setting(std::string key, T defaultValue, DefaultsSuite& suite = DefaultsSuite::standard())
        : key_(std::move(key)), default_(std::move(defaultValue)), suite_(&suite) {}

    /// The stored value, or this declaration's default if the key was never written (or holds a
    /// value of another type, or an unknown raw value of an enumeration).
    T get() const {
        auto stored = suite_->value(key_);
        if (!stored) {
            return default_;
        }
        if constexpr (RawRepresentable<T>) {
            if (auto* s = std::get_if<std::string>(&*stored)) {
                if (auto v = fromRawValue(*s, static_cast<T*>(nullptr))) {
                    return *v;
                }
            }
            return default_;
        } else {
            if (auto* v = std::get_if<T>(&*stored)) {
                return *v;
            }
            return default_;
        }
    }
    operator T() const { return get(); }

    void set(const T& value) {
        if constexpr (RawRepresentable<T>) {
            suite_->setValue(key_, std::string(rawValue(value)));
        } else {
            suite_->setValue(key_, value);
        }
    }
    Setting& operator=(const T& value) {
        set(value);
        return *this;
    }

    const std::string& key() const { return key_; }
    const T& defaultValue() const { return default_; }
    ObservationToken observe(std::function<void()> onChange, Dispatcher dispatcher = {}) const {
        return suite_->observe(key_, std::move(onChange), std::move(dispatcher));
    }

private:
    std::string key_;
    T default_;
    DefaultsSuite* suite_;
};

} // namespace tidemark
