// Shared pieces of the core tests: private storage folders and a fixed clock and place.
#pragma once

#include "calendar/Calendar.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tidemark::testing {

/// A fresh folder, removed with everything in it when the object goes.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Points XDG_DATA_HOME and XDG_CONFIG_HOME at a fresh folder, so that the default store, the
/// standard defaults and the shared suite all start empty; restores everything afterwards.
class IsolatedStorage {
public:
    IsolatedStorage();
    ~IsolatedStorage();
    IsolatedStorage(const IsolatedStorage&) = delete;
    IsolatedStorage& operator=(const IsolatedStorage&) = delete;
    const std::filesystem::path& root() const { return dir_.path(); }
    std::filesystem::path dataHome() const { return dir_.path() / "data"; }
    std::filesystem::path configHome() const { return dir_.path() / "config"; }

private:
    TempDir dir_;
    std::string oldData_, oldConfig_;
    bool hadData_ = false, hadConfig_ = false;
};

/// An environment with the given zone and locale whose clock stands at the local wall time
/// year-month-day hour:minute:second of that zone.
CalendarEnvironment fixedEnvironment(const std::string& timeZoneId, const std::string& localeId,
                                     int year, int month, int day, int hour = 0, int minute = 0,
                                     int second = 0);

/// An environment with the given zone, locale and week rules, on the real clock.
CalendarEnvironment zoneEnvironment(const std::string& timeZoneId,
                                    const std::string& localeId = "en_US",
                                    std::optional<int> firstWeekday = std::nullopt,
                                    std::optional<int> minimumDaysInFirstWeek = std::nullopt);

/// Components with year, month and day, and whichever time fields are given.
DateComponents dateParts(std::int64_t year, std::int64_t month, std::int64_t day,
                         std::optional<std::int64_t> hour = std::nullopt,
                         std::optional<std::int64_t> minute = std::nullopt,
                         std::optional<std::int64_t> second = std::nullopt);

/// The moment of a local wall time in the current environment's calendar.
Date localDate(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

} // namespace tidemark::testing
