// Command-line options of the app. They fix the clock, the time zone, the locale and the week
// rules (for screenshots, demos and tests); without them the app follows the system.
#pragma once

#include "calendar/Calendar.h"

#include <QStringList>
#include <optional>
#include <string>

namespace tidemark {

/// A transfer to or from the cloud that runs without a window.
enum class CloudTransfer { none, backup, restore };

struct LaunchOptions {
    CalendarEnvironment environment;
    bool quitAfterFirstFrame = false;
    /// Where to save a picture of the window once it has drawn (then the app quits); empty: none.
    QString screenshotPath;
    /// Where to save pictures of every page, light and dark (then the app quits); empty: none.
    QString screenshotDir;
    /// The tidemark: URL the app was opened with, or "".
    QString url;
    /// The request identifier of the reminder whose notification was activated, or "".
    QString notificationResponse;
    CloudTransfer cloudTransfer = CloudTransfer::none;
    /// A calendar file to write the date book to ("-": standard output), or "": none.
    QString exportIcsPath;
    /// A calendar or contacts file to import, or "": none; `assumeYes` adds without asking.
    QString importIcsPath;
    bool assumeYes = false;
};

/// Parses the arguments (argv[0] first). On bad input returns nothing and sets `error` to a
/// message for the user.
std::optional<LaunchOptions> parseLaunchOptions(const QStringList& arguments, QString* error);

} // namespace tidemark
