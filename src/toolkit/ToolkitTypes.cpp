#include "toolkit/ToolkitTypes.h"

#include "toolkit/DayRing.h"
#include "toolkit/MonthModel.h"

#include <QtQml>

namespace tidemark {

void registerToolkitTypes() {
    qmlRegisterType<MonthModel>("TideMark", 1, 0, "MonthModel");
    qmlRegisterType<DayRing>("TideMark", 1, 0, "DayRing");
}

} // namespace tidemark
