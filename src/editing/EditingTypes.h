// QML registration of the editing area's view models: the event form, the rule editors and the
// card with its memo pages each register their own types.
#pragma once

namespace tidemark {

void registerEditingTypes();
void registerFormTypes();
void registerRuleEditorTypes();
void registerCardTypes();

} // namespace tidemark
