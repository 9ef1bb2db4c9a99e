// How a reminder asks the notification server to show it.
#include "agent/ReminderAgent.h"

#include <QTest>

using namespace tidemark;

class ReminderHintsTest : public QObject {
    Q_OBJECT

private slots:
    void hints_data() {
        QTest::addColumn<bool>("timeSensitive");
        QTest::addColumn<bool>("sound");
        QTest::addColumn<QStringList>("capabilities");
        QTest::addColumn<int>("urgency");
        QTest::addColumn<bool>("soundName");
        const QStringList withSound{"actions", "body", "sound"};
        const QStringList silent{"actions", "body"};
        QTest::newRow("reminder, server plays sounds") << true << true << withSound << 2 << true;
        QTest::newRow("reminder, silent server") << true << true << silent << 2 << false;
        QTest::newRow("no sound asked") << true << false << withSound << 2 << false;
        QTest::newRow("not time sensitive") << false << true << withSound << 1 << true;
    }
    void hints() {
        QFETCH(bool, timeSensitive);
        QFETCH(bool, sound);
        QFETCH(QStringList, capabilities);
        QFETCH(int, urgency);
        QFETCH(bool, soundName);
        const NotificationRequest request{"E@@1", "Title", "Subtitle", 60, sound, timeSensitive};
        const QVariantMap hints = reminderHints(request, capabilities);
        // The urgency goes over the bus as a byte; any other type is ignored by servers.
        QCOMPARE(hints.value("urgency").metaType(), QMetaType::fromType<uchar>());
        QCOMPARE(int(hints.value("urgency").value<uchar>()), urgency);
        QCOMPARE(hints.value("desktop-entry").toString(), QString("org.tidemark.TideMark"));
        QCOMPARE(hints.contains("sound-name"), soundName);
    }
};

QTEST_GUILESS_MAIN(ReminderHintsTest)
#include "test_reminder_hints.moc"
