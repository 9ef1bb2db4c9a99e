// tidemark-agent: delivers Tide Mark's reminders and runs its background refresh, also while the
// app is closed. Started by the session (XDG autostart) or on demand over D-Bus; one per session.
//   tidemark-agent          run (ends at once if another agent runs)
//   tidemark-agent --list   print the pending reminders and the next background refresh
//   tidemark-agent --check  say whether a notification server answers and what it can do
#include "agent/ReminderAgent.h"
#include "platform/linux/LinuxNotificationCenter.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDateTime>
#include <QLocale>
#include <QTranslator>
#include <cstdio>

namespace {

QString when(double secondsSince1970) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(secondsSince1970 * 1000))
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

int list() {
    try {
        tidemark::PendingRequests requests;
        const auto pending = requests.pending();
        std::printf("%zu pending reminder(s)\n", pending.size());
        for (const auto& p : pending) {
            std::printf("  %s  %s - %s  [%s]\n", qPrintable(when(p.fireAt)),
                        p.request.title.c_str(), p.request.subtitle.c_str(),
                        p.request.identifier.c_str());
        }
        for (const auto& task : requests.backgroundTasks()) {
            std::printf("background refresh %s not before %s\n", task.identifier.c_str(),
                        qPrintable(when(task.earliestBeginDate)));
        }
    } catch (const tidemark::PendingRequestsError& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}

int check() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        std::printf("No session bus: reminders can't be shown.\n");
        return 1;
    }
    if (!tidemark::notificationServerAvailable(bus)) {
        std::printf("No notification server answers on the session bus.\n");
        return 1;
    }
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                               QStringLiteral("/org/freedesktop/Notifications"),
                                               QStringLiteral("org.freedesktop.Notifications"),
                                               QStringLiteral("GetServerInformation"));
    const auto info = bus.call(call, QDBus::Block, 5000);
    if (info.type() != QDBusMessage::ReplyMessage || info.arguments().size() < 3) {
        std::printf("The notification server does not answer: %s\n",
                    qPrintable(info.errorMessage()));
        return 1;
    }
    std::printf("Notification server: %s %s (%s)\n", qPrintable(info.arguments()[0].toString()),
                qPrintable(info.arguments()[2].toString()),
                qPrintable(info.arguments()[1].toString()));
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tidemark-agent"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Delivers Tide Mark's reminders, also while the app is closed."));
    parser.addHelpOption();
    const QCommandLineOption listOption(QStringLiteral("list"),
                                        QStringLiteral("Print the pending reminders and quit."));
    const QCommandLineOption checkOption(QStringLiteral("check"),
                                         QStringLiteral("Check the notification server and quit."));
    parser.addOption(listOption);
    parser.addOption(checkOption);
    parser.process(app);
    if (parser.isSet(listOption)) {
        return list();
    }
    if (parser.isSet(checkOption)) {
        return check();
    }

    // The texts in the session's language: Simplified Chinese for zh*, English otherwise.
    QTranslator texts;
    if (texts.load(QLocale::system().language() == QLocale::Chinese
                       ? QStringLiteral(":/agent-i18n/Localizable_zh_CN.qm")
                       : QStringLiteral(":/agent-i18n/Localizable_en.qm"))) {
        QCoreApplication::installTranslator(&texts);
    }
    tidemark::ReminderAgent agent;
    QString error;
    if (!agent.start(&error)) {
        std::fprintf(stderr, "tidemark-agent: %s\n", qPrintable(error));
        // Another agent doing the work is not a failure.
        return error.startsWith(QLatin1String("Another")) ? 0 : 1;
    }
    return QCoreApplication::exec();
}
