// QML registration of the settings area's view models.
#pragma once

namespace tidemark {

void registerSettingsTypes();

} // namespace tidemark
