// What the first appearance of the calendar page does once per installation.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <array>

namespace tidemark {

/// The two sample events for a first launch on the day `today` (year, month and day must be
/// present: a missing one is a fatal stop). The second starts on today's day number plus one,
/// not carried into the next month.
std::array<eventObject, 2> makeSampleEvents(const DateComponents& today);

/// Asks for notification permission, clears pending reminders, adds the two sample events,
/// publishes to the widgets and marks the first launch done — only while "userLaunchStatus" is
/// false. Returns whether it ran.
bool runFirstLaunchWorkIfNeeded();

} // namespace tidemark
