// Publication of all events to the home and lock screen widgets: a complete JSON copy of the
// store's events in the shared suite, then a request to reload every widget timeline.
#pragma once

#include "records/eventInfo.h"

#include <memory>
#include <string>
#include <vector>

namespace tidemark {

/// Where widget reload requests go. The Linux service broadcasts a D-Bus signal that the widget
/// program listens to; without one installed, a reload request reaches nobody.
class WidgetCenter {
public:
    virtual ~WidgetCenter() = default;
    virtual void reloadAllTimelines() = 0;
};

WidgetCenter* widgetCenter();
void setWidgetCenter(std::shared_ptr<WidgetCenter> center);

/// The widget data for these records: a JSON array of events in the given order, with the
/// three reserved fields blanked (0, "", "") whatever the records hold.
std::string encodeWidgetData(const std::vector<eventInfo>& events);

class widgetFunc {
public:
    /// Writes every event of the store, in store order, under "eventDataFromMainApp" in the
    /// shared suite (replacing the previous value whole), then asks for a reload of all
    /// timelines — the reload happens also when the suite can't be opened. The store is read
    /// while holding the suite's write lock, so of publications running at once in any
    /// processes, the last one written holds the latest events.
    void publishEventDataToWidget();
};

/// An empty helper class kept beside widgetFunc; nothing depends on it.
class stringComputeFunc {};

} // namespace tidemark
