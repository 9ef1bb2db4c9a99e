// Types of other libraries that the window's QML uses: their descriptions let qmllint check the
// pages that use them. Nothing here is creatable from QML.
#pragma once

#include "platform/linux/Haptics.h"

#include <QAbstractItemModel>
#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

/// The base of the list models; Qt 6.4's own type descriptions leave it out.
struct AbstractItemModelForeign {
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

/// "Haptics": the process's haptic feedback (Haptics::instance()), which the app and the tests
/// also reach from C++.
struct HapticsForeign {
    Q_GADGET
    QML_FOREIGN(tidemark::Haptics)
    QML_NAMED_ELEMENT(Haptics)
    QML_SINGLETON
public:
    static Haptics* create(QQmlEngine*, QJSEngine*) {
        QQmlEngine::setObjectOwnership(Haptics::instance(), QQmlEngine::CppOwnership);
        return Haptics::instance();
    }
};

} // namespace tidemark
