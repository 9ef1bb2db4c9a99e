#include "editing/EditingTypes.h"

namespace tidemark {

void registerRuleEditorTypes() {}

} // namespace tidemark
