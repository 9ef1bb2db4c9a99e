#include "editing/AddNewEventForm.h"
#include "editing/EditingTypes.h"
#include "editing/FormDatePickerModel.h"

#include <QtQml>

namespace tidemark {

void registerFormTypes() {
    qmlRegisterType<AddNewEventForm>("TideMark", 1, 0, "AddNewEventForm");
    qmlRegisterType<FormDatePickerModel>("TideMark", 1, 0, "FormDatePickerModel");
}

} // namespace tidemark
