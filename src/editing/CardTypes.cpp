#include "editing/EditingTypes.h"

namespace tidemark {

void registerCardTypes() {}

} // namespace tidemark
