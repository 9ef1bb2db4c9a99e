// Widget reloads on Linux: a broadcast signal on the session bus,
//   path /org/tidemark/Widgets, interface org.tidemark.Widgets, member ReloadAllTimelines,
// which every running tidemark-widget listens to before it reads the shared suite again.
// Without a session bus the request reaches nobody, as a reload with no widgets would.
#pragma once

#include "widgets/widgetFunc.h"

namespace tidemark {

inline constexpr const char* kWidgetsObjectPath = "/org/tidemark/Widgets";
inline constexpr const char* kWidgetsInterface = "org.tidemark.Widgets";
inline constexpr const char* kReloadSignal = "ReloadAllTimelines";

class DBusWidgetCenter final : public WidgetCenter {
public:
    void reloadAllTimelines() override;
};

} // namespace tidemark
