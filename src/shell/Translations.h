// The "Localizable" table: Qt ID-based translations compiled from i18n/Localizable_<lang>.ts.
#pragma once

#include <string>

class QCoreApplication;

namespace tidemark {

/// Loads the table for `localeId` (the system's locale when empty): Simplified Chinese for
/// zh*, English otherwise; then makes the core's localized() use it.
void installTranslations(QCoreApplication& app, const std::string& localeId);

} // namespace tidemark
