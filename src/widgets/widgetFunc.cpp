#include "widgets/widgetFunc.h"

#include "records/Defaults.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"

#include <cstdint>
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
    return encodeEventArrayWithBlankReserved(events);
}

void widgetFunc::publishEventDataToWidget() {
    // The store is read inside the suite's write transaction: publications of every process take
    // turns, and each one writes what the store held once the previous one had written, so a
    // publication that read the store earlier can't overwrite a later one.
    if (DefaultsSuite* suite = DefaultsSuite::named(kSharedSuiteName)) {
        suite->update(kWidgetDataKey, []() -> std::optional<DefaultsValue> {
            try {
                // The store's result set as kept until the next commit: no copy of the events,
                // and a later read before any commit (the month grid at launch) finds it kept.
                const std::string json = encodeWidgetData(*Results<eventInfo>().shared());
                // Copied as bytes of the same type, which is one memcpy, not a loop per char.
                const auto* data = reinterpret_cast<const std::uint8_t*>(json.data());
                return Bytes(data, data + json.size());
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
