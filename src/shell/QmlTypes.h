// The C++ types that the window's QML creates, under the module name "TideMark" 1.0. The app and
// the Qt Quick tests register them through this one function.
#pragma once

namespace tidemark {

void registerQmlTypes();

} // namespace tidemark
