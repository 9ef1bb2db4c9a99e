// How fast the main screen comes up with 1,000 events and how much engine work a month change
// costs. The figures depend on the machine, so they are reported (qInfo), not held to a limit;
// what is checked is that the screen shown is the full one.
#include "QtTestSupport.h"
#include "TestSupport.h"
#include "engine/RuleBatch.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "shell/tideMarkApp.h"
#include "test_main_support.h"
#include "toolkit/MonthModel.h"

#include <QElapsedTimer>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

/// 1,000 events: one-offs, daily, weekly, monthly and yearly rules spread over the years.
void seedThousandEvents() {
    Store store = Store::open();
    store.write([&] {
        for (int i = 0; i < 1000; ++i) {
            eventInfo event;
            static_cast<EventFields&>(event) =
                dayEvent("E" + std::to_string(i), "Event " + std::to_string(i), 2020 + i % 8,
                         1 + i % 12, 1 + i % 28,
                         i % 11 == 0 ? "" : "colorForUserSelection0" + std::to_string(1 + i % 5));
            event.eventType = i % 5;
            event.eventRepeatOrNot = event.eventType != 0;
            if (event.eventType == 2) {
                event.eventDateWhenEveryWeek = encodeDayListArchive({1 + i % 7});
            } else if (event.eventType == 3) {
                event.eventDateWhenEveryMonth = encodeDayListArchive({1 + i % 28, 99});
            } else if (event.eventType == 1) {
                event.eventDateWhenCustomizeRepeatTimes = i % 4;
            }
            store.add(event);
        }
    });
}

} // namespace

class MainStartupTest : public QObject {
    Q_OBJECT

private slots:
    void firstFrameAndMonthChangesWithAThousandEvents() {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        IsolatedStorage storage;
        ScopedCalendarEnvironment environment(
            fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8));
        FakeServices services;
        Setting<bool>("userLaunchStatus", false).set(true);
        seedThousandEvents();
        QCOMPARE(Store::open().count<eventInfo>(), std::int64_t(1000));

        QElapsedTimer clock;
        clock.start();
        tideMarkApp app;
        QQmlApplicationEngine engine;
        QVERIFY(app.launch(engine));
        auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
        QVERIFY(window);
        bool framed = false;
        qint64 firstFrameMs = 0;
        connect(
            window, &QQuickWindow::frameSwapped, this,
            [&] {
                framed = true;
                firstFrameMs = clock.elapsed();
            },
            Qt::SingleShotConnection);
        QTRY_VERIFY_WITH_TIMEOUT(framed, 20000);
        qInfo("first frame with 1000 events: %lld ms (launch, QML and the month grid)",
              firstFrameMs);

        // The grid drawn is the full one: every day of March has at least the daily events.
        MonthModel month;
        for (int i = 0; i < MonthModel::kCellCount; ++i) {
            QVERIFY(
                !month.data(month.index(i), MonthModel::ColorNamesRole).toStringList().isEmpty());
        }

        // A month change: one store read, one batch, 42 days.
        QElapsedTimer step;
        qint64 worst = 0;
        qint64 total = 0;
        constexpr int kChanges = 24;
        for (int i = 0; i < kChanges; ++i) {
            step.start();
            month.moveMonth(i < kChanges / 2 ? 1 : -1);
            const qint64 ns = step.nsecsElapsed();
            worst = std::max(worst, ns);
            total += ns;
        }
        qInfo("month change with 1000 events: %.2f ms on average, %.2f ms at worst",
              static_cast<double>(total) / kChanges / 1e6, static_cast<double>(worst) / 1e6);
        QCOMPARE(month.monthTitle(), QString("March 2026"));
        step.start();
        const auto events = Results<eventInfo>().snapshot();
        const qint64 readNs = step.nsecsElapsed();
        step.start();
        {
            const RuleBatch batch(events, Calendar::current());
            std::size_t hits = 0;
            for (int d = 1; d <= 42; ++d) {
                DateComponents c;
                c.year = 2026;
                c.month = 3;
                c.day = d;
                hits += batch.indicesOnDate(*Calendar::current().date(c)).size();
            }
            QVERIFY(hits > 0);
        }
        qInfo("of which the store read: %.2f ms, the batch and 42 days: %.2f ms",
              static_cast<double>(readNs) / 1e6, static_cast<double>(step.nsecsElapsed()) / 1e6);
    }
};

QTEST_MAIN(MainStartupTest)
#include "test_main_startup.moc"
