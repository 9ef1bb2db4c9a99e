// Display texts are keys into the "Localizable" table. The core has no translation machinery of
// its own: the app installs a translator (Qt's ID-based translations) at start-up, and without
// one a key stands for itself.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tidemark {

using Translator = std::function<std::string(std::string_view key)>;

/// Installs the translator used by localized(); an empty one restores "the key itself".
void setTranslator(Translator translator);

/// The text of `key` in the user's language, or the key itself where it has none.
std::string localized(std::string_view key);

} // namespace tidemark
