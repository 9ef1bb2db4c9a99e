// tidemark-widget: one home or lock-screen widget in a window of its own, or the list of the
// events a widget can show (--list-events). Wires the model and the window; nothing else.
#include "platform/linux/SystemColorScheme.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "shell/Translations.h"
#include "widgetapp/WidgetModel.h"
#include "widgetapp/WidgetOptions.h"
#include "widgets/IntentHandler.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <functional>
#include <memory>

Q_IMPORT_QML_PLUGIN(TideMark_WidgetPlugin)

namespace {

/// The events of the configuration side, one "identifier<TAB>displayString" a line. Data that
/// is missing or unreadable stops the process, as it stops the configuration side.
int listEvents() {
    tidemark::SmallAndMediumWidgetHandler().provideEventSelectedOptionsCollection(
        {}, [](tidemark::ObjectCollection<tidemark::EventBasicInfo> collection,
               std::optional<tidemark::IntentError>) {
            for (const auto& item : collection.items) {
                std::printf("%s\t%s\n", item.identifier.c_str(), item.displayString.c_str());
            }
        });
    return std::fflush(stdout) == 0 ? 0 : 1;
}

/// The app's appearance setting, else the desktop's scheme.
bool darkScheme(const tidemark::SystemColorScheme& desktop) {
    switch (tidemark::Setting<tidemark::Theme>{"APP_UI_systemColorTheme",
                                               tidemark::Theme::systemDefault}
                .get()) {
    case tidemark::Theme::light:
        return false;
    case tidemark::Theme::dark:
        return true;
    case tidemark::Theme::systemDefault:
        break;
    }
    return desktop.dark();
}

} // namespace

int main(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    QString error;
    const auto options = tidemark::parseWidgetOptions(arguments, &error);
    if (!options) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return error.contains(QStringLiteral("Usage:")) ? 0 : 2;
    }
    if (options->listEvents) {
        return listEvents();
    }

    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tidemark-widget"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tide Mark"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.tidemark.TideMark.Widget"));
    tidemark::setCalendarEnvironment(options->environment);
    tidemark::installTranslations(app, options->environment.localeId);

    auto choice = tidemark::WidgetModel::keptChoice(options->widgetId)
                      .value_or(tidemark::WidgetModel::Choice{});
    if (!options->size.isEmpty()) {
        choice.size = options->size;
    }
    if (options->eventId) {
        choice.eventId = *options->eventId;
    }
    if (options->kind) {
        choice.kind = *options->kind;
    }
    // The scheme asked for, or the app's setting and the desktop's scheme as they are at each
    // reload; a change of the desktop's scheme reloads at once.
    std::unique_ptr<tidemark::SystemColorScheme> desktop;
    std::function<bool()> dark;
    if (!options->colorScheme.isEmpty()) {
        dark = [asked = options->colorScheme == QLatin1String("dark")] { return asked; };
    } else {
        desktop = std::make_unique<tidemark::SystemColorScheme>();
        dark = [&desktop] { return darkScheme(*desktop); };
    }
    tidemark::WidgetModel model(options->widgetId, choice, dark);
    if (desktop) {
        QObject::connect(desktop.get(), &tidemark::SystemColorScheme::darkChanged, &model,
                         &tidemark::WidgetModel::reload);
    }
    const bool takesPicture = !options->screenshotPath.isEmpty();
    if (!takesPicture) {
        model.startWatching();
    }

    QQuickStyle::setStyle(QStringLiteral("Material"));
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    QVariantMap initial{{QStringLiteral("model"), QVariant::fromValue(&model)},
                        {QStringLiteral("configureAtStart"), options->configure}};
    if (const auto geometry = tidemark::WidgetModel::keptGeometry(options->widgetId)) {
        initial.insert(QStringLiteral("keptGeometry"), *geometry);
    }
    engine.setInitialProperties(initial);
    engine.load(QUrl(QStringLiteral("qrc:/TideMark/Widget/WidgetWindow.qml")));
    if (engine.rootObjects().isEmpty()) {
        return 1;
    }
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (window && takesPicture) {
        const QString path = options->screenshotPath;
        const bool dialog = options->configure;
        QObject::connect(
            window, &QQuickWindow::frameSwapped, &app,
            [window, path, dialog] {
                QTimer::singleShot(300, window, [window, path, dialog] {
                    auto* target =
                        dialog ? window->findChild<QQuickWindow*>(QStringLiteral("configureDialog"))
                               : window;
                    const bool saved = target && target->grabWindow().save(path);
                    if (!saved) {
                        std::fprintf(stderr, "Could not save the picture to %s\n",
                                     qPrintable(path));
                    }
                    QCoreApplication::exit(saved ? 0 : 1);
                });
            },
            Qt::SingleShotConnection);
    }
    return QGuiApplication::exec();
}
