#include "widgetapp/WidgetOptions.h"

#include "shell/LaunchOptions.h"

#include <QCommandLineParser>

namespace tidemark {

std::optional<WidgetOptions> parseWidgetOptions(const QStringList& arguments, QString* error) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tide Mark widget"));
    parser.addHelpOption();
    const QCommandLineOption listOption(
        QStringLiteral("list-events"),
        QStringLiteral("Print the events a widget can show, one identifier<TAB>title a line."));
    const QCommandLineOption idOption(QStringLiteral("id"),
                                      QStringLiteral("The kept widget of this name."),
                                      QStringLiteral("name"));
    const QCommandLineOption sizeOption(QStringLiteral("size"),
                                        QStringLiteral("small, medium, large or lock."),
                                        QStringLiteral("size"));
    const QCommandLineOption eventOption(QStringLiteral("event"),
                                         QStringLiteral("The event shown (small, medium, lock)."),
                                         QStringLiteral("id"));
    const QCommandLineOption kindOption(
        QStringLiteral("kind"),
        QStringLiteral("The kind listed by a large widget: 0 not chosen, 1 all, 2 one-off dates, "
                       "3 repeating, 4 starred."),
        QStringLiteral("n"));
    const QCommandLineOption configureOption(QStringLiteral("configure"),
                                             QStringLiteral("Open the widget's settings."));
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"),
        QStringLiteral("Save the widget as a PNG picture once it has drawn, then quit."),
        QStringLiteral("file"));
    const QCommandLineOption schemeOption(
        QStringLiteral("color-scheme"), QStringLiteral("light or dark."), QStringLiteral("scheme"));
    // The clock and place options are the app's own; they are handed to its parser.
    const QStringList environmentNames{QStringLiteral("now"), QStringLiteral("time-zone"),
                                       QStringLiteral("locale"), QStringLiteral("first-weekday")};
    QList<QCommandLineOption> environmentOptions;
    for (const auto& name : environmentNames) {
        environmentOptions << QCommandLineOption(name, QStringLiteral("As for tidemark."),
                                                 QStringLiteral("value"));
    }
    parser.addOptions({listOption, idOption, sizeOption, eventOption, kindOption, configureOption,
                       screenshotOption, schemeOption});
    parser.addOptions(environmentOptions);
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return std::nullopt;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        *error = parser.helpText();
        return std::nullopt;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error =
            QStringLiteral("Unexpected argument: %1").arg(parser.positionalArguments().first());
        return std::nullopt;
    }
    WidgetOptions options;
    options.listEvents = parser.isSet(listOption);
    options.widgetId = parser.value(idOption);
    if (options.widgetId.contains(QLatin1Char('/')) ||
        options.widgetId.startsWith(QLatin1Char('.'))) {
        *error = QStringLiteral("--id takes a plain name");
        return std::nullopt;
    }
    options.size = parser.value(sizeOption);
    static const QStringList sizes{QStringLiteral("small"), QStringLiteral("medium"),
                                   QStringLiteral("large"), QStringLiteral("lock")};
    if (parser.isSet(sizeOption) && !sizes.contains(options.size)) {
        *error = QStringLiteral("--size takes small, medium, large or lock");
        return std::nullopt;
    }
    if (parser.isSet(eventOption)) {
        options.eventId = parser.value(eventOption);
    }
    if (parser.isSet(kindOption)) {
        bool ok = false;
        const int kind = parser.value(kindOption).toInt(&ok);
        if (!ok || kind < 0 || kind > 4) {
            *error = QStringLiteral("--kind takes a number from 0 to 4");
            return std::nullopt;
        }
        options.kind = kind;
    }
    options.configure = parser.isSet(configureOption);
    options.screenshotPath = parser.value(screenshotOption);
    options.colorScheme = parser.value(schemeOption);
    if (!options.colorScheme.isEmpty() && options.colorScheme != QLatin1String("light") &&
        options.colorScheme != QLatin1String("dark")) {
        *error = QStringLiteral("--color-scheme takes light or dark");
        return std::nullopt;
    }
    QStringList environmentArguments{arguments.value(0)};
    for (const auto& option : environmentOptions) {
        if (parser.isSet(option)) {
            environmentArguments << QStringLiteral("--") + option.names().first()
                                 << parser.value(option);
        }
    }
    const auto launch = parseLaunchOptions(environmentArguments, error);
    if (!launch) {
        return std::nullopt;
    }
    options.environment = launch->environment;
    return options;
}

} // namespace tidemark
