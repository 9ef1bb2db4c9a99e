// The application entry: binds the scene's settings, owns the delegate and the one DataStore,
// and builds the single window with its QML root.
#pragma once

#include "platform/linux/Haptics.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "shell/AppDelegate.h"
#include "shell/DataStore.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

class QQmlApplicationEngine;

namespace tidemark {
class CalendarPage;
class SystemColorScheme;
} // namespace tidemark

namespace tidemark {

class tideMarkApp : public QObject {
    Q_OBJECT
    /// "light" or "dark": the theme setting, or for "Default" the desktop's colour scheme, followed
    /// live ("" until the window is loaded).
    Q_PROPERTY(
        QString preferredColorScheme READ preferredColorScheme NOTIFY preferredColorSchemeChanged)
public:
    Setting<bool> userLaunchStatus{"userLaunchStatus", false};
    Setting<bool> colorSchemeSetToAlwaysLight{"colorSchemeSetToAlwaysLight", false};
    Setting<bool> colorSchemeSetToAlwaysDark{"colorSchemeSetToAlwaysDark", false};
    Setting<bool> colorSchemeSetToFollowSystem{"colorSchemeSetToFollowSystem", false};
    Setting<Theme> userTheme{"APP_UI_systemColorTheme", Theme::systemDefault};
    Setting<bool> appLockStatu{"APP_FUNC_appLockStatu", false};
    Setting<bool> appLockSettingFromUser{"APP_FUNC_appLockSettingFromUser", false};

    /// Binds the settings and makes the delegate; opens no store and touches no service.
    explicit tideMarkApp(QObject* parent = nullptr);
    ~tideMarkApp() override;

    AppDelegate& appDelegate() { return appDelegate_; }
    /// The one DataStore of the process, made on first use.
    DataStore* dataStore();
    /// The haptic feedback of the window (QML singleton "Haptics").
    Haptics* haptics() { return Haptics::instance(); }
    /// The calendar page's C++ side, made by launch().
    CalendarPage* calendarPage() { return calendarPage_; }

    /// The app of this process (the last one made and not yet gone), which the window's
    /// singletons "TideMarkApp", "DataStore" and "CalendarPage" are taken from.
    static tideMarkApp* current();

    QString preferredColorScheme() const;

    /// The main screen's headline for the page setting "FUNC_APP_tabViewSelection": 0 today's
    /// date with weekday, month and day in the user's locale; 1 the next-few-days title; else "".
    Q_INVOKABLE QString headline(int tabViewSelection) const;

    /// The messages about files found damaged and kept aside since the last call, each handed
    /// out once. Reminders are planned again and the widget data published again when their
    /// file was the one replaced.
    Q_INVOKABLE QStringList takeDamagedFileMessages();

    /// Runs the launch sequence, then loads the window into `engine`. False if QML failed.
    bool launch(QQmlApplicationEngine& engine);

    /// The background refresh handler of the scene.
    void handleBackgroundRefresh();

signals:
    void preferredColorSchemeChanged();

private:
    AppDelegate appDelegate_;
    std::unique_ptr<DataStore> dataStore_;
    CalendarPage* calendarPage_ = nullptr;
    ObservationToken themeObservation_;
    std::unique_ptr<SystemColorScheme> systemColorScheme_;
};

} // namespace tidemark
