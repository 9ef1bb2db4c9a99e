// The calendar and popup toolkit's C++ types for QML.
#pragma once

namespace tidemark {

/// Registers MonthModel and DayRing in the "TideMark" module.
void registerToolkitTypes();

} // namespace tidemark
