#include "shell/LaunchOptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace tidemark {

std::optional<LaunchOptions> parseLaunchOptions(const QStringList& arguments, QString* error) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tide Mark, a personal date book"));
    parser.addHelpOption();
    const QCommandLineOption nowOption(
        QStringLiteral("now"),
        QStringLiteral("Freeze the clock at a local time (YYYY-MM-DDTHH:MM[:SS])."),
        QStringLiteral("time"));
    const QCommandLineOption zoneOption(
        QStringLiteral("time-zone"),
        QStringLiteral("Use this IANA time zone (e.g. Europe/Berlin)."), QStringLiteral("zone"));
    const QCommandLineOption localeOption(QStringLiteral("locale"),
                                          QStringLiteral("Use this locale (e.g. en_US, zh_CN)."),
                                          QStringLiteral("locale"));
    const QCommandLineOption weekOption(
        QStringLiteral("first-weekday"),
        QStringLiteral("First day of the week, 1 Sunday ... 7 Saturday."), QStringLiteral("day"));
    const QCommandLineOption quitOption(QStringLiteral("quit-after-first-frame"),
                                        QStringLiteral("Quit once the first frame is shown."));
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"),
        QStringLiteral("Save the window as a PNG picture once it has drawn, then quit."),
        QStringLiteral("file"));
    const QCommandLineOption screenshotDirOption(
        QStringLiteral("screenshot-dir"),
        QStringLiteral("Save every page, light and dark, as PNG pictures in a folder, then quit."),
        QStringLiteral("folder"));
    const QCommandLineOption responseOption(
        QStringLiteral("notification-response"),
        QStringLiteral("Open the app for a tapped reminder (given by the reminder agent)."),
        QStringLiteral("identifier"));
    const QCommandLineOption backupOption(
        QStringLiteral("cloud-backup"),
        QStringLiteral("Back up every event and memo to the cloud account, without a window."));
    const QCommandLineOption restoreOption(
        QStringLiteral("cloud-restore"),
        QStringLiteral("Restore every event and memo from the cloud account, without a window."));
    const QCommandLineOption exportIcsOption(
        QStringLiteral("export-ics"),
        QStringLiteral("Write every event to an iCalendar file (- for standard output), without "
                       "a window."),
        QStringLiteral("file"));
    const QCommandLineOption importIcsOption(
        QStringLiteral("import-ics"),
        QStringLiteral("Import the events of an iCalendar file or the birthdays and anniversaries "
                       "of a vCard file, without a window, after showing what will be added."),
        QStringLiteral("file"));
    const QCommandLineOption yesOption(QStringLiteral("yes"),
                                       QStringLiteral("With --import-ics: add without asking."));
    parser.addOptions({nowOption, zoneOption, localeOption, weekOption, quitOption,
                       screenshotOption, screenshotDirOption, responseOption, backupOption,
                       restoreOption, exportIcsOption, importIcsOption, yesOption});
    parser.addPositionalArgument(QStringLiteral("url"),
                                 QStringLiteral("A tidemark: URL to open (optional)."));
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return std::nullopt;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        *error = parser.helpText();
        return std::nullopt;
    }

    LaunchOptions options;
    options.quitAfterFirstFrame = parser.isSet(quitOption);
    options.screenshotPath = parser.value(screenshotOption);
    options.screenshotDir = parser.value(screenshotDirOption);
    options.notificationResponse = parser.value(responseOption);
    if (parser.isSet(backupOption) && parser.isSet(restoreOption)) {
        *error = QStringLiteral("--cloud-backup and --cloud-restore can't be given together");
        return std::nullopt;
    }
    options.cloudTransfer = parser.isSet(backupOption)    ? CloudTransfer::backup
                            : parser.isSet(restoreOption) ? CloudTransfer::restore
                                                          : CloudTransfer::none;
    options.exportIcsPath = parser.value(exportIcsOption);
    options.importIcsPath = parser.value(importIcsOption);
    options.assumeYes = parser.isSet(yesOption);
    if (!options.exportIcsPath.isEmpty() && !options.importIcsPath.isEmpty()) {
        *error = QStringLiteral("--export-ics and --import-ics can't be given together");
        return std::nullopt;
    }
    for (const auto& argument : parser.positionalArguments()) {
        if (!argument.startsWith(QStringLiteral("tidemark:"), Qt::CaseInsensitive)) {
            *error = QStringLiteral("Not a tidemark: URL: %1").arg(argument);
            return std::nullopt;
        }
        options.url = argument;
    }
    options.environment.timeZoneId = parser.value(zoneOption).toStdString();
    options.environment.localeId = parser.value(localeOption).toStdString();
    if (parser.isSet(weekOption)) {
        bool ok = false;
        const int day = parser.value(weekOption).toInt(&ok);
        if (!ok || day < 1 || day > 7) {
            *error =
                QStringLiteral("--first-weekday takes a number from 1 (Sunday) to 7 (Saturday)");
            return std::nullopt;
        }
        options.environment.firstWeekday = day;
    }
    if (parser.isSet(nowOption)) {
        static const QRegularExpression pattern(
            QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})T(\\d{2}):(\\d{2})(?::(\\d{2}))?$"));
        const auto match = pattern.match(parser.value(nowOption));
        if (!match.hasMatch()) {
            *error = QStringLiteral("--now takes a local time like 2026-03-10T08:00");
            return std::nullopt;
        }
        DateComponents c;
        c.year = match.captured(1).toInt();
        c.month = match.captured(2).toInt();
        c.day = match.captured(3).toInt();
        c.hour = match.captured(4).toInt();
        c.minute = match.captured(5).toInt();
        c.second = match.captured(6).isEmpty() ? 0 : match.captured(6).toInt();
        if (*c.month < 1 || *c.month > 12 || *c.day < 1 || *c.day > 31 || *c.hour > 23 ||
            *c.minute > 59 || *c.second > 59) {
            *error = QStringLiteral("--now names no valid time: %1").arg(parser.value(nowOption));
            return std::nullopt;
        }
        options.environment.fixedNow = Calendar(options.environment).date(c);
        if (!options.environment.fixedNow) {
            *error = QStringLiteral("--now names no valid time: %1").arg(parser.value(nowOption));
            return std::nullopt;
        }
    }
    return options;
}

} // namespace tidemark
