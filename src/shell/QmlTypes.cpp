#include "shell/QmlTypes.h"

#include <QLoggingCategory>
#include <string_view>

// Made by the build (qt_add_qml_module) from the C++ types' declarations in their headers.
void qml_register_types_TideMark_Toolkit();
void qml_register_types_TideMark_Editing();
void qml_register_types_TideMark_Browsing();
void qml_register_types_TideMark_Settings();
void qml_register_types_TideMark();

namespace tidemark {
namespace {

struct ModuleFile {
    std::string_view name;
    std::string_view folder;
};

constexpr ModuleFile kModuleFiles[] = {
#include "QmlFiles.inc"
};

} // namespace

void registerQmlTypes() {
    qml_register_types_TideMark_Toolkit();
    qml_register_types_TideMark_Editing();
    qml_register_types_TideMark_Browsing();
    qml_register_types_TideMark_Settings();
    qml_register_types_TideMark();
}

QUrl moduleFileUrl(const QString& fileName) {
    const QByteArray name = fileName.toUtf8();
    for (const auto& file : kModuleFiles) {
        if (file.name == std::string_view(name.constData(), name.size())) {
            return QUrl(QStringLiteral("qrc:/qt-project.org/imports/%1/%2")
                            .arg(QLatin1String(file.folder.data(), file.folder.size()), fileName));
        }
    }
    qWarning() << "No QML module has a file" << fileName;
    return {};
}

} // namespace tidemark
