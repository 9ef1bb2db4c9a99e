#include "records/SettingsKeys.h"

namespace tidemark {

std::string_view rawValue(Theme theme) {
    switch (theme) {
    case Theme::systemDefault:
        return "Default";
    case Theme::light:
        return "Light";
    case Theme::dark:
        return "Dark";
    }
    return "Default";
}

std::optional<Theme> fromRawValue(std::string_view raw, Theme*) {
    for (Theme t : {Theme::systemDefault, Theme::light, Theme::dark}) {
        if (rawValue(t) == raw) {
            return t;
        }
    }
    return std::nullopt;
}

std::string_view rawValue(tabValue tab) {
    switch (tab) {
    case tabValue::summaryView:
        return "summaryView";
    case tabValue::eventListView:
        return "eventListView";
    case tabValue::moreView:
        return "moreView";
    case tabValue::addNewEvent:
        return "addNewEvent";
    }
    return "summaryView";
}

std::optional<tabValue> fromRawValue(std::string_view raw, tabValue*) {
    for (tabValue t : {tabValue::summaryView, tabValue::eventListView, tabValue::moreView,
                       tabValue::addNewEvent}) {
        if (rawValue(t) == raw) {
            return t;
        }
    }
    return std::nullopt;
}

std::optional<SettingType> settingTypeOf(std::string_view key) {
    for (const auto& entry : kSettingKeys) {
        if (entry.key == key) {
            return entry.type;
        }
    }
    return std::nullopt;
}

} // namespace tidemark
