// Pictures of every page of the window: each tab of the main screen in light and in dark, saved
// as PNG files named main-<page>-<scheme>.png ("main-calendar-light.png", ...).
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QQuickWindow;

namespace tidemark {

/// The file names savePagePictures writes, in order.
QStringList pagePictureNames();

/// Shows each page in turn through the window's showForPicture(tab, scheme) and saves it into
/// `folder`; then calls `done` with whether every picture was saved. The persisted tab is left
/// as it was.
void savePagePictures(QQuickWindow* window, const QString& folder, std::function<void(bool)> done);

} // namespace tidemark
