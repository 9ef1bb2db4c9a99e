// A walk through every page of the app by taps, as a user reaches them from the main screen.
// Each stop names the page's QML type, the items to tap on the way (by objectName) and the page
// or popup that must be on screen at the end. The picture run (--screenshot-dir) and the
// navigation test walk the same stops.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QObject;
class QQuickItem;
class QQuickWindow;

namespace tidemark {

struct TourStop {
    /// The QML type of the page or popup reached (the picture's name starts with it).
    QString page;
    /// "" or what tells two stops of the same page apart ("add", "edit").
    QString mode;
    /// objectNames of the items to tap, in order, starting on the main screen. "swipe:NAME"
    /// drags that item to the left, as a thumb uncovers a row's actions.
    QStringList taps;
    /// objectName of the page or popup that must be showing at the end.
    QString target;
    /// The way passes through a stored event (or memo); without one the stop can't be reached.
    bool needsEvent = false;
};

/// Every stop, main tabs first.
const QList<TourStop>& tourStops();

/// "SettingView" for a page made from SettingView.qml: the QML type of a QML-made object.
QString qmlTypeName(const QObject* object);

/// The first visible item or open popup named `name` in the window, with its middle inside the
/// window when `onScreen`; null when there is none.
QObject* findShownObject(QQuickWindow* window, const QString& name, bool onScreen = true);

/// Closes every open popup and menu and goes back to the main screen at once.
void returnToMainScreen(QQuickWindow* window);

/// Walks one stop: back to the main screen, then each tap once its item shows (each waits up to
/// `patienceMs`). Calls `done` with the target object, or null and what went wrong.
void walkTourStop(QQuickWindow* window, const TourStop& stop,
                  std::function<void(QObject* target, const QString& error)> done,
                  int patienceMs = 4000);

} // namespace tidemark
