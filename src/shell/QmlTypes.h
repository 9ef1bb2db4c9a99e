// The window's QML modules: "TideMark" (the areas' pages and C++ types, each type declared in its
// header with QML_ELEMENT) and "TideMark.Components" (the theme and the shared pieces).
#pragma once

#include <QString>
#include <QUrl>

namespace tidemark {

/// Registers the C++ types of the "TideMark" module. The module is a static library without a
/// plugin, so the app, the Qt Quick tests and the benchmarks call this once before they load QML.
void registerQmlTypes();

/// The address of `fileName` (a page, or a test's host beside the pages) in the "TideMark"
/// module's folder, where the module's types resolve by name.
QUrl moduleFileUrl(const QString& fileName);

} // namespace tidemark
