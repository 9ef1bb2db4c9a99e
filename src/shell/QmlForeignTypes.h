// Types that the "TideMark" module's QML uses without making them: their descriptions let
// qmllint check the pages that use them. Nothing here is creatable from QML.
#pragma once

#include "platform/linux/Haptics.h"

#include <QAbstractItemModel>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

/// The base of the list models; Qt 6.4's own type descriptions leave it out.
struct AbstractItemModelForeign {
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

/// The type of the form's `haptics` property. The pages reach the object itself through the
/// "Haptics" singleton, which the app (or a test) registers at run time.
struct HapticsForeign {
    Q_GADGET
    QML_FOREIGN(tidemark::Haptics)
    QML_ANONYMOUS
};

} // namespace tidemark
