// What the timeline and the filter screens do beyond binding settings: the reminder work on the
// timeline's appearance, and the appearance choice, which writes four settings at once.
#pragma once

#include "records/Defaults.h"
#include "records/SettingsKeys.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class TimelineActions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The chosen scheme (ColorScheme): the first of the three flags that is set, in the order of
    /// the enumeration; -1 while none is.
    Q_PROPERTY(int colorScheme READ colorScheme NOTIFY colorSchemeChanged)
public:
    enum ColorScheme { AlwaysLight = 0, AlwaysDark = 1, FollowSystem = 2 };
    Q_ENUM(ColorScheme)

    explicit TimelineActions(QObject* parent = nullptr);

    int colorScheme() const;

    /// On each appearance of the timeline: drops every pending reminder request and plans them
    /// afresh from the store.
    Q_INVOKABLE void timelineAppeared();

    /// Sets the chosen scheme's flag, clears the two others, and sets the window's theme setting
    /// to "Light", "Dark" or "Default".
    Q_INVOKABLE void chooseColorScheme(int scheme);

signals:
    void colorSchemeChanged();

private:
    Setting<bool> colorSchemeSetToAlwaysLight_{"colorSchemeSetToAlwaysLight", false};
    Setting<bool> colorSchemeSetToAlwaysDark_{"colorSchemeSetToAlwaysDark", false};
    Setting<bool> colorSchemeSetToFollowSystem_{"colorSchemeSetToFollowSystem", false};
    Setting<Theme> userTheme_{"APP_UI_systemColorTheme", Theme::systemDefault};
    ObservationToken schemeObservations_[3];
};

} // namespace tidemark
