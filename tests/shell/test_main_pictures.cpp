// Every page of the app rendered offscreen by the app itself, light and dark, for a store with
// events of every kind at a fixed moment: each picture must exist, show more than one colour,
// and the run must print no QML warning. Set TIDEMARK_PICTURE_DIR to keep the pictures.
#include "QtTestSupport.h"
#include "records/Defaults.h"
#include "shell/Screenshots.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tidemark;
using namespace tidemark::testing;

class MainPicturesTest : public QObject {
    Q_OBJECT

private slots:
    void everyPageIsDrawnInLightAndDark() {
        const QString locale = "zh_CN";
        IsolatedStorage storage;
        seedEventsOfEveryKind();
        realmDataFunc().addMemoData("E4", "M1", "Bank transfer", "Standing order", now());
        Setting<bool>("userLaunchStatus", false).set(true);

        QTemporaryDir temporary;
        const QByteArray keep = qgetenv("TIDEMARK_PICTURE_DIR");
        const QString folder =
            keep.isEmpty() ? temporary.path() : QDir(QString::fromLocal8Bit(keep)).filePath(locale);
        QProcess app;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_DATA_HOME", QString::fromStdString(storage.dataHome().string()));
        env.insert("XDG_CONFIG_HOME", QString::fromStdString(storage.configHome().string()));
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.remove("DBUS_SESSION_BUS_ADDRESS");
        app.setProcessEnvironment(env);
        app.start(TIDEMARK_APP_PATH, {"--now", "2026-03-10T08:00", "--time-zone", "Europe/Berlin",
                                      "--locale", locale, "--screenshot-dir", folder});
        QVERIFY(app.waitForFinished(150000));
        const QString errors = QString::fromLocal8Bit(app.readAllStandardError());
        QVERIFY2(app.exitCode() == 0, qPrintable(errors));
        QVERIFY2(!errors.contains(".qml"), qPrintable(errors));

        for (const auto& name : pagePictureNames()) {
            const QImage picture(QDir(folder).filePath(name));
            QVERIFY2(!picture.isNull(), qPrintable(name));
            QCOMPARE(picture.width(), 390);
            // A blank page is one colour; a drawn one has text and marks.
            QSet<QRgb> colours;
            for (int y = 0; y < picture.height() && colours.size() < 8; y += 7) {
                for (int x = 0; x < picture.width(); x += 3) {
                    colours.insert(picture.pixel(x, y));
                }
            }
            QVERIFY2(colours.size() >= 8, qPrintable(name));
        }
        // Dark pictures are dark: the corner pixel of the calendar page.
        const QImage light(QDir(folder).filePath("CalendarPageView-light.png"));
        const QImage dark(QDir(folder).filePath("CalendarPageView-dark.png"));
        QVERIFY(qGray(light.pixel(2, 2)) > 200);
        QVERIFY(qGray(dark.pixel(2, 2)) < 60);
    }
};

QTEST_GUILESS_MAIN(MainPicturesTest)
#include "test_main_pictures.moc"
