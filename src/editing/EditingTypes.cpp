#include "editing/EditingTypes.h"

namespace tidemark {

void registerEditingTypes() {
    registerFormTypes();
    registerRuleEditorTypes();
    registerCardTypes();
}

} // namespace tidemark
