// Pictures of every page of the window: each tab of the main screen in light and in dark, saved
// as PNG files named main-<page>-<scheme>.png ("main-calendar-light.png", ...), then each page of
// the editing area that this build has, pushed above the main screen, as
// page-<page>-<scheme>.png ("page-AddNewEventPage-add-light.png", ...).
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QQuickWindow;

namespace tidemark {

/// The file names savePagePictures writes, in order.
QStringList pagePictureNames();

/// Shows each page in turn through the window's showForPicture(tab, scheme) and
/// showPageForPicture(file, properties, scheme) and saves it into `folder`; then goes back to the
/// main screen and calls `done` with whether every picture was saved. The persisted tab is left
/// as it was. Pages of one event show the first event in store order.
void savePagePictures(QQuickWindow* window, const QString& folder, std::function<void(bool)> done);

} // namespace tidemark
