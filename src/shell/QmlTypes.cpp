#include "shell/QmlTypes.h"

// Made by the build (qt_add_qml_module) from the QML_ELEMENT declarations of the module's types.
void qml_register_types_TideMark();

namespace tidemark {

void registerQmlTypes() {
    qml_register_types_TideMark();
}

QUrl moduleFileUrl(const QString& fileName) {
    return QUrl(QStringLiteral("qrc:/qt-project.org/imports/TideMark/") + fileName);
}

} // namespace tidemark
