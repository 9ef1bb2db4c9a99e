// Pictures of every page of the window, light and dark: the tour walks to each page by taps and
// saves it as <QML type>[-<mode>]-<scheme>.png ("SettingView-light.png",
// "AddNewEventPage-edit-dark.png"). The run works on a copy of the user's data, so the taps
// change nothing the user keeps.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QQuickWindow;

namespace tidemark {

/// The file names savePagePictures writes for a store with events and memos, in order.
QStringList pagePictureNames();

/// Copies the app's data and settings folders into `folder` and points $XDG_DATA_HOME and
/// $XDG_CONFIG_HOME there for the rest of the process. False if a copy failed.
bool useCopyOfUserData(const QString& folder);

/// Walks the tour in light, then in dark, saving each page into `folder`, then the lock page in
/// both (the copy of the data is locked for it), then the share picture of the first event of the
/// list as share-<eventId>.png, then calls `done`
/// with whether every reachable page was saved. Pages reached through a stored event or memo are
/// left out (and named on standard error) when the store has none.
void savePagePictures(QQuickWindow* window, const QString& folder, std::function<void(bool)> done);

} // namespace tidemark
