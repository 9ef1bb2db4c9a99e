#include "editing/EditingTypes.h"
#include "editing/NotiRuleModels.h"
#include "editing/RepeatRuleModels.h"

#include <QtQml>

namespace tidemark {

void registerRuleEditorTypes() {
    qmlRegisterType<AddRepeatRuleModel>("TideMark", 1, 0, "AddRepeatRuleModel");
    qmlRegisterType<EditRepeatRuleModel>("TideMark", 1, 0, "EditRepeatRuleModel");
    qmlRegisterType<AddNotiRuleModel>("TideMark", 1, 0, "AddNotiRuleModel");
    qmlRegisterType<EditNotiRuleModel>("TideMark", 1, 0, "EditNotiRuleModel");
}

} // namespace tidemark
