#include "editing/EditingTypes.h"

namespace tidemark {

void registerFormTypes() {}

} // namespace tidemark
