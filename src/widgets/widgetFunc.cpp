#include "widgets/widgetFunc.h"

#include "records/Defaults.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"

#include <exception>
#include <mutex>
#include <optional>

namespace tidemark {

namespace {
std::mutex gMutex;
std::shared_ptr<WidgetCenter> gCenter;
} // namespace

WidgetCenter* widgetCenter() {
    std::lock_guard lock(gMutex);
    return gCenter.get();
}

void setWidgetCenter(std::shared_ptr<WidgetCenter> center) {
    std::lock_guard lock(gMutex);
    gCenter = std::move(center);
}

std::string encodeWidgetData(const std::vector<eventInfo>& events) {
    std::vector<eventObject> objects;
    objects.reserve(events.size());
    for (const auto& event : events) {
        auto object = eventAs<eventObject>(event);
        object.backupDataType01 = 0;
        object.backupDataType02.clear();
        object.backupDataType03.clear();
        objects.push_back(std::move(object));
    }
    return encodeEventArray(objects);
}

void widgetFunc::publishEventDataToWidget() {
    // The store is read inside the suite's write transaction: publications of every process take
    // turns, and each one writes what the store held once the previous one had written, so a
    // publication that read the store earlier can't overwrite a later one.
    if (DefaultsSuite* suite = DefaultsSuite::named(kSharedSuiteName)) {
        suite->update(kWidgetDataKey, []() -> std::optional<DefaultsValue> {
            try {
                const std::string json = encodeWidgetData(Results<eventInfo>().snapshot());
                return Bytes(json.begin(), json.end());
            } catch (const std::exception&) {
                // Text that is not valid UTF-8 can't be encoded; the key is then cleared, as for
                // any failed encoding, and the widgets find no data.
                return std::nullopt;
            }
        });
    }
    std::shared_ptr<WidgetCenter> center;
    {
        std::lock_guard lock(gMutex);
        center = gCenter;
    }
    if (center) {
        center->reloadAllTimelines();
    }
}

} // namespace tidemark
