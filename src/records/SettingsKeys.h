// Every persisted settings key of the program with its type, and the two enumerations stored by
// raw value. Declarations (Setting<T>{"key", default}) stay at the places that use them, each with
// its own default; this catalogue lets tools, the QML AppStorage type and the tests check that a
// key is spelled and typed the same everywhere.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tidemark {

/// The appearance the scene applies.
enum class Theme { systemDefault, light, dark };
std::string_view rawValue(Theme theme);
std::optional<Theme> fromRawValue(std::string_view raw, Theme*);

/// The main screen's tabs.
enum class tabValue { summaryView, eventListView, moreView, addNewEvent };
std::string_view rawValue(tabValue tab);
std::optional<tabValue> fromRawValue(std::string_view raw, tabValue*);

enum class SettingType { Bool, Int, String, Bytes, Theme, TabValue };

struct SettingKey {
    std::string_view key;
    SettingType type;
};

// clang-format off
inline constexpr std::array kSettingKeys{
    // general settings and signals
    SettingKey{"userLaunchStatus", SettingType::Bool},
    SettingKey{"colorSchemeSetToAlwaysLight", SettingType::Bool},
    SettingKey{"colorSchemeSetToAlwaysDark", SettingType::Bool},
    SettingKey{"colorSchemeSetToFollowSystem", SettingType::Bool},
    SettingKey{"APP_UI_systemColorTheme", SettingType::Theme},
    SettingKey{"UI_BGIMAGE_allAppBackgroundSettingString", SettingType::String},
    SettingKey{"UI_User_AscendingForListAtMemoForCardViewPage", SettingType::Bool},
    SettingKey{"APP_FUNC_appLockStatu", SettingType::Bool},
    SettingKey{"APP_FUNC_appLockSettingFromUser", SettingType::Bool},
    SettingKey{"APP_FUNC_loadEditTargetEventDataOnlyOneTimes", SettingType::Bool},
    SettingKey{"APP_FUNC_newTabBarTabValue", SettingType::TabValue},
    SettingKey{"APP_UI_LOADINGVIEWACTIVEORNOTFORSHAREBUTTON", SettingType::Bool},
    SettingKey{"FUNC_APP_tabViewSelection", SettingType::Int},
    SettingKey{"FUNC_APP_allPageLoadingViewToggleValue", SettingType::Bool},
    SettingKey{"FUNC_MAINVIEW_mainViewBindingTabItemTagIntValue", SettingType::Int},
    SettingKey{"ALL_APP_loadingViewCallByNextFewDaysEventViewAtMainView", SettingType::Bool},
    SettingKey{"ALL_APP_dateMutiSeletedDataInfoForCalendarView", SettingType::Bytes},
    SettingKey{"ALL_APP_editEventIdStringPassFromTL", SettingType::String},
    SettingKey{"ALL_APP_eventViewDateRangeSeletedInfoFromUser", SettingType::Int},
    SettingKey{"ALL_APP_filterSelectionFromUserForColorString", SettingType::String},
    SettingKey{"TL_UIOptions_showWhichKindEventSelection", SettingType::Int},
    SettingKey{"TL_UIOptions_timelineViewShowEndEventOrNot", SettingType::Bool},
    SettingKey{"TL_UIOptions_showDaysIncludeTheStartDayOrNot", SettingType::Bool},
    SettingKey{"EV_UIOptions_menuNumForEventCardView", SettingType::Int},
    SettingKey{"EV_UIOptions_selectExactEventIdForEventCardView", SettingType::String},
    SettingKey{"VS_UIOptions_currentItemIndex", SettingType::Int},
    SettingKey{"BG_Task_testForBgTask", SettingType::String},
    // notification and cloud state
    SettingKey{"ALL_APP_switchOfNotiOpenOrNotForAllEvent", SettingType::Bool},
    SettingKey{"ALL_APP_notiAuthorizationForAppStatus", SettingType::Bool},
    SettingKey{"FUNC_NOTI_userLaunchAppByPressLocalNotificationStatu", SettingType::Bool},
    SettingKey{"FUNC_NOTI_userLaunchAppByPressLocalNotificationEventInfo", SettingType::String},
    SettingKey{"ALL_APP_cloudkitFuncStatus", SettingType::Bool},
    SettingKey{"ALL_APP_userCloudAccStatus", SettingType::Bool},
    SettingKey{"FUNC_CLOUD_cloudFuncNotActiveBecauseIdChanged", SettingType::Bool},
    SettingKey{"FUNC_CLOUD_errorStringForiCloudDataTask", SettingType::String},
    SettingKey{"FUNC_CLOUD_userIdInfoAtThisDevice", SettingType::String},
    SettingKey{"FUNC_CLOUD_eventZoneStatuAtThisDevice", SettingType::Bool},
    SettingKey{"FUNC_CLOUD_memoZoneStatuAtThisDevice", SettingType::Bool},
    SettingKey{"FUNC_CLOUD_lastSyncTimeStringForiCloudDataTask", SettingType::String},
    SettingKey{"FUNC_CLOUD_lastManuallyBackupTimeStringForiCloudDataTask", SettingType::String},
    SettingKey{"APP_CLOUDKITPAGE_loadingViewToggleForCloudkitPageBackupButton", SettingType::Bool},
    SettingKey{"APP_CLOUDKITPAGE_loadingViewToggleForCloudkitPageDownloadButton", SettingType::Bool},
    // the WebDAV account of this device (its password is in the Secret Service)
    SettingKey{"LINUX_CLOUD_serverAddress", SettingType::String},
    SettingKey{"LINUX_CLOUD_userName", SettingType::String},
    SettingKey{"LINUX_CLOUD_pinnedCertificate", SettingType::String},
    // unsaved input of the add-or-edit form
    SettingKey{"AE_eventColorString", SettingType::String},
    SettingKey{"AE_eventShareGroupId", SettingType::String},
    SettingKey{"AE_GroupIdForThisEvent", SettingType::String},
    SettingKey{"AE_eventRepeatOrNot", SettingType::Bool},
    SettingKey{"AE_newEventType", SettingType::Int},
    SettingKey{"AE_newEventTypeForCycleOrNot", SettingType::Int},
    SettingKey{"AE_newEventTypeHaveIntervalInfo", SettingType::Bool},
    SettingKey{"AE_intNumInputFromUserForCustomizeRepeatEvent", SettingType::Int},
    SettingKey{"AE_weekArrayForAppStorageList", SettingType::Bytes},
    SettingKey{"AE_monthArrayForAppStorageList", SettingType::Bytes},
    SettingKey{"AE_haveOneEndDateForRepeatEvent", SettingType::Bool},
    SettingKey{"AE_setNotiForThisEvent", SettingType::Bool},
    SettingKey{"AE_notiFuncSelectedType", SettingType::Int},
    SettingKey{"AE_addStarToThisEvent", SettingType::Bool},
    SettingKey{"AE_addMemoToThisEvent", SettingType::Bool},
    SettingKey{"AE_shareToOtherPeople", SettingType::Bool},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntYear", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntMonth", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntDay", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventEndDateIntYear", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventEndDateIntMonth", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventEndDateIntDay", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventByDayHour", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForCustomizeRepeatEventByDayMin", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForNotiHourAndMinIntHour", SettingType::Int},
    SettingKey{"AE_dateInputFromUserForNotiHourAndMinIntMin", SettingType::Int},
};
// clang-format on

/// The catalogue entry of a key, if the program knows it.
std::optional<SettingType> settingTypeOf(std::string_view key);

/// The colours a user can pick for an event, in the order every colour menu shows them.
inline constexpr std::array<std::string_view, 5> colorString{
    "colorForUserSelection01", "colorForUserSelection02", "colorForUserSelection03",
    "colorForUserSelection04", "colorForUserSelection05",
};

/// Where the widgets find the events: the shared suite and its key.
inline constexpr std::string_view kSharedSuiteName = "group.marlowharbor.tideMark";
inline constexpr std::string_view kWidgetDataKey = "eventDataFromMainApp";

} // namespace tidemark
