// The browsing screens' C++ types for QML (module "TideMark" 1.0).
#pragma once

namespace tidemark {

void registerBrowsingTypes();

} // namespace tidemark
