// Command-line options of tidemark-widget: which widget, which size and content, and the clock,
// zone and colour scheme for pictures and tests.
#pragma once

#include "calendar/Calendar.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace tidemark {

struct WidgetOptions {
    /// Print the selectable events, one "identifier<TAB>displayString" a line, and end.
    bool listEvents = false;
    /// The widget whose settings are kept under this name; empty for a widget not yet kept.
    QString widgetId;
    /// "small", "medium", "large" or "lock"; empty: the kept one, else "small".
    QString size;
    std::optional<QString> eventId;
    std::optional<int> kind;
    /// Open the configuration dialog at start.
    bool configure = false;
    /// Save the window (the dialog with --configure) as a PNG once drawn, then quit.
    QString screenshotPath;
    /// "light" or "dark"; empty follows the app's appearance setting.
    QString colorScheme;
    CalendarEnvironment environment;
};

/// Parses the arguments (argv[0] first); on bad input returns nothing and sets `error`.
std::optional<WidgetOptions> parseWidgetOptions(const QStringList& arguments, QString* error);

} // namespace tidemark
