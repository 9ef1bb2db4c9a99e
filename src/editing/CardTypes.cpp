#include "editing/CardViewModel.h"
#include "editing/EditingTypes.h"
#include "editing/MemoModels.h"

#include <QtQml>

namespace tidemark {

void registerCardTypes() {
    qmlRegisterType<CardViewModel>("TideMark", 1, 0, "CardViewModel");
    qmlRegisterType<EditEventTitleContentModel>("TideMark", 1, 0, "EditEventTitleContentModel");
    qmlRegisterType<EditEventStartDateModel>("TideMark", 1, 0, "EditEventStartDateModel");
    qmlRegisterType<EditShareSettingModel>("TideMark", 1, 0, "EditShareSettingModel");
    qmlRegisterType<MemoListModel>("TideMark", 1, 0, "MemoListModel");
    qmlRegisterType<MemoEditorModel>("TideMark", 1, 0, "MemoEditorModel");
}

} // namespace tidemark
