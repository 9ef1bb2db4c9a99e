// The settings catalogue and the enumerations stored by raw value.
#include "TestSupport.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"

#include <gtest/gtest.h>
#include <set>

using namespace tidemark;

TEST(SettingsCatalog, KeysAreUniqueAndCarryTheirAreaPrefix) {
    std::set<std::string_view> seen;
    const std::set<std::string_view> unprefixed = {
        "userLaunchStatus", "colorSchemeSetToAlwaysLight", "colorSchemeSetToAlwaysDark",
        "colorSchemeSetToFollowSystem"};
    for (const auto& entry : kSettingKeys) {
        EXPECT_TRUE(seen.insert(entry.key).second) << entry.key;
        const bool prefixed = entry.key.find('_') != std::string_view::npos;
        EXPECT_TRUE(prefixed || unprefixed.count(entry.key)) << entry.key;
    }
}

TEST(SettingsCatalog, EnumerationsReadUnknownRawValuesAsTheirDefault) {
    tidemark::testing::IsolatedStorage storage;
    Setting<Theme> theme{"APP_UI_systemColorTheme", Theme::systemDefault};
    Setting<tabValue> tab{"APP_FUNC_newTabBarTabValue", tabValue::summaryView};
    Setting<std::string> rawTheme{"APP_UI_systemColorTheme", ""};
    Setting<std::string> rawTab{"APP_FUNC_newTabBarTabValue", ""};

    struct ThemeCase {
        const char* raw;
        Theme read;
    };
    for (auto c : {ThemeCase{"Default", Theme::systemDefault}, ThemeCase{"Light", Theme::light},
                   ThemeCase{"Dark", Theme::dark}, ThemeCase{"dark", Theme::systemDefault},
                   ThemeCase{"", Theme::systemDefault}}) {
        rawTheme.set(c.raw);
        EXPECT_EQ(theme.get(), c.read) << c.raw;
    }
    for (auto t : {tabValue::summaryView, tabValue::eventListView, tabValue::moreView,
                   tabValue::addNewEvent}) {
        tab.set(t);
        EXPECT_EQ(rawTab.get(), rawValue(t));
        EXPECT_EQ(tab.get(), t);
    }
    rawTab.set("settingsView");
    EXPECT_EQ(tab.get(), tabValue::summaryView);
    theme.set(Theme::dark);
    EXPECT_EQ(rawTheme.get(), "Dark");
}
