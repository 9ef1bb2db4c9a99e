// The window's QML modules, one per area: "TideMark.Components" (the theme and the shared
// pieces), "TideMark.Toolkit", "TideMark.Editing", "TideMark.Browsing", "TideMark.Settings" and
// "TideMark" (the shell), which passes all of them on to whoever imports it.
#pragma once

#include <QString>
#include <QUrl>

namespace tidemark {

/// Registers the C++ types of the window's modules. The modules are static libraries without a
/// plugin, so the app, the Qt Quick tests and the benchmarks call this once before they load QML.
void registerQmlTypes();

/// The address of the QML file `fileName` (a page or a piece of one of the modules) in its
/// module's folder; an empty address for a name that no module has.
QUrl moduleFileUrl(const QString& fileName);

} // namespace tidemark
