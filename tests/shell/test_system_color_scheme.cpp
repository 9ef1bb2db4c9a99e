// The desktop's colour scheme on a private session bus: the real settings portal
// (xdg-desktop-portal) and its GTK backend, started by D-Bus activation, read the scheme from
// GSettings through dconf (also activated), in configuration folders of the test's own. The
// backend needs an X display, so a virtual one (Xvfb) runs too. gsettings changes the desktop's
// choice as a settings panel would.
#include "platform/linux/SystemColorScheme.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QGuiApplication>
#include <QPalette>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace tidemark;

namespace {

constexpr int kAnswerMs = 10000;

void setPaletteDark(bool dark) {
    QPalette palette; // an empty palette resolves to the platform's, which is light offscreen
    if (dark) {
        palette.setColor(QPalette::Window, QColor(0x20, 0x22, 0x25));
        palette.setColor(QPalette::WindowText, QColor(0xee, 0xee, 0xee));
    }
    QGuiApplication::setPalette(palette);
    QCOMPARE(paletteIsDark(), dark);
}

} // namespace

class SystemColorSchemeTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir work_;
    QProcess display_, bus_, bareBus_;
    QProcessEnvironment env_;

    /// Starts a private session bus that activates the services of `serviceDir` (none if empty)
    /// and returns its address.
    QString startBus(QProcess& bus, const QString& name, const QString& serviceDir) {
        QFile config(work_.filePath(name + ".conf"));
        if (!config.open(QIODevice::WriteOnly)) {
            return {};
        }
        config.write(QStringLiteral("<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus "
                                    "Configuration 1.0//EN\" \"http://www.freedesktop.org/"
                                    "standards/dbus/1.0/busconfig.dtd\">\n<busconfig>"
                                    "<type>session</type><listen>unix:tmpdir=%1</listen>%2"
                                    "<policy context=\"default\"><allow send_destination=\"*\" "
                                    "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
                                    "<allow own=\"*\"/></policy></busconfig>\n")
                         .arg(work_.path(), serviceDir.isEmpty()
                                                ? QString()
                                                : "<servicedir>" + serviceDir + "</servicedir>")
                         .toUtf8());
        config.close();
        bus.setProcessEnvironment(env_);
        bus.start("dbus-daemon",
                  {"--config-file", config.fileName(), "--nofork", "--print-address=1"});
        if (!bus.waitForStarted() || !bus.waitForReadyRead(10000)) {
            return {};
        }
        return QString::fromLocal8Bit(bus.readLine().trimmed());
    }

    /// Sets the desktop's scheme: "default", "prefer-dark" or "prefer-light".
    void setDesktopScheme(const QString& value) {
        QProcess gsettings;
        gsettings.setProcessEnvironment(env_);
        gsettings.start("gsettings", {"set", "org.gnome.desktop.interface", "color-scheme", value});
        QVERIFY2(gsettings.waitForFinished(10000), "gsettings is not installed (scripts/setup)");
        QVERIFY2(gsettings.exitCode() == 0, gsettings.readAllStandardError().constData());
    }

    static uint ownerPid(const QString& name) {
        const QDBusReply<uint> pid = QDBusConnection::sessionBus().interface()->servicePid(name);
        return pid.isValid() ? pid.value() : 0;
    }

    /// Whether process `pid` has ended (gone, or a zombie that init has yet to collect: the bus
    /// starts services detached from itself).
    static bool ended(uint pid) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        if (!stat.open(QIODevice::ReadOnly)) {
            return true;
        }
        const QByteArray line = stat.readAll();
        const auto state = line.lastIndexOf(')') + 2;
        return state < 2 || state >= line.size() || line[state] == 'Z';
    }

    /// Ends the activated service that owns `name`, and waits until it has.
    static void stopService(const QString& name) {
        if (const uint pid = ownerPid(name)) {
            ::kill(static_cast<pid_t>(pid), SIGTERM);
            QTRY_VERIFY_WITH_TIMEOUT(ended(pid), 5000);
            QTRY_VERIFY_WITH_TIMEOUT(ownerPid(name) == 0, 5000);
        }
    }

private slots:
    void initTestCase() {
        QVERIFY(work_.isValid());
        display_.start("Xvfb",
                       {"-displayfd", "1", "-screen", "0", "320x240x24", "-nolisten", "tcp"});
        QVERIFY2(display_.waitForStarted(), "Xvfb is not installed (scripts/setup installs it)");
        QVERIFY(display_.waitForReadyRead(15000));
        const QString displayName = ":" + QString::fromLatin1(display_.readLine().trimmed());

        // The portal, its GTK backend and dconf, as the session would start them; the portal
        // picks its backend by the desktop's name from the portals folder.
        QDir dir(work_.path());
        QVERIFY(dir.mkpath("services") && dir.mkpath("portals") && dir.mkpath("config") &&
                dir.mkpath("runtime"));
        QFile::setPermissions(work_.filePath("runtime"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QList<std::pair<QString, QString>> services{
            {"org.freedesktop.portal.Desktop", "/usr/libexec/xdg-desktop-portal"},
            {"org.freedesktop.impl.portal.desktop.gtk", "/usr/libexec/xdg-desktop-portal-gtk"},
            {"ca.desrt.dconf", "/usr/libexec/dconf-service"}};
        for (const auto& [name, exec] : services) {
            QVERIFY2(QFile::exists(exec), qPrintable(exec + " is missing (scripts/setup)"));
            QFile file(work_.filePath("services/" + name + ".service"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(
                QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, exec).toUtf8());
        }
        QVERIFY(QFile::copy("/usr/share/xdg-desktop-portal/portals/gtk.portal",
                            work_.filePath("portals/gtk.portal")));

        env_ = QProcessEnvironment::systemEnvironment();
        env_.remove("WAYLAND_DISPLAY");
        env_.insert("DISPLAY", displayName);
        env_.insert("XDG_CURRENT_DESKTOP", "GNOME");
        env_.insert("XDG_DESKTOP_PORTAL_DIR", work_.filePath("portals"));
        env_.insert("XDG_CONFIG_HOME", work_.filePath("config"));
        env_.insert("XDG_RUNTIME_DIR", work_.filePath("runtime"));
        env_.insert("GSETTINGS_BACKEND", "dconf");
        env_.insert("NO_AT_BRIDGE", "1");
        const QString address = startBus(bus_, "bus", work_.filePath("services"));
        QVERIFY2(!address.isEmpty(), "dbus-daemon is not installed");
        env_.insert("DBUS_SESSION_BUS_ADDRESS", address);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLocal8Bit());
        QVERIFY2(QDBusConnection::sessionBus().isConnected(),
                 qPrintable(address + " " + bus_.readAllStandardError()));

        // A bus where no portal can be found.
        const QString bareAddress = startBus(bareBus_, "bare", {});
        QVERIFY(!bareAddress.isEmpty());
        QVERIFY(QDBusConnection::connectToBus(bareAddress, "bare").isConnected());

        // The desktop prefers dark before the app starts; the palette stays light.
        setDesktopScheme("prefer-dark");
        setPaletteDark(false);
    }

    void cleanupTestCase() {
        QDBusConnection::disconnectFromBus("bare");
        for (const char* name : {"org.freedesktop.portal.Desktop",
                                 "org.freedesktop.impl.portal.desktop.gtk", "ca.desrt.dconf"}) {
            stopService(name);
        }
        for (QProcess* p : {&bareBus_, &bus_, &display_}) {
            p->terminate();
            if (!p->waitForFinished(3000)) {
                p->kill();
                p->waitForFinished();
            }
        }
    }

    void theDesktopsChoiceAtStartIsRead() {
        SystemColorScheme scheme;
        QSignalSpy changed(&scheme, &SystemColorScheme::darkChanged);
        QVERIFY(!scheme.dark()); // the palette's answer until the portal's comes
        QTRY_VERIFY_WITH_TIMEOUT(scheme.dark(), kAnswerMs);
        QCOMPARE(scheme.scheme(), QString("dark"));
        QCOMPARE(changed.size(), 1);
    }

    void changesWhileRunningAreFollowedAndThePortalBeatsThePalette() {
        SystemColorScheme scheme;
        QTRY_VERIFY_WITH_TIMEOUT(scheme.dark(), kAnswerMs);
        QSignalSpy changed(&scheme, &SystemColorScheme::darkChanged);
        // Each step that changes the desktop's choice also changes the answer, so that waiting
        // for the answer waits for the portal's signal.
        const struct {
            const char* desktop;
            bool paletteDark, dark;
        } steps[] = {
            {"prefer-light", false, false},
            {"prefer-light", true, false}, // a dark palette doesn't outvote the desktop
            {"default", true, true},       // no preference: the palette decides
            {"default", false, false},
            {"prefer-dark", false, true},
        };
        int flips = 0;
        bool last = scheme.dark();
        for (const auto& step : steps) {
            setPaletteDark(step.paletteDark);
            setDesktopScheme(step.desktop);
            QTRY_COMPARE_WITH_TIMEOUT(scheme.dark(), step.dark, kAnswerMs);
            flips += step.dark != last;
            last = step.dark;
            QCOMPARE(changed.size(), flips);
        }
        // The portal goes away: the palette answers again.
        stopService("org.freedesktop.portal.Desktop");
        QTRY_VERIFY_WITH_TIMEOUT(!scheme.dark(), kAnswerMs);
        QCOMPARE(changed.size(), flips + 1);
    }

    void withoutAPortalThePaletteAnswersAtOnce() {
        setPaletteDark(true);
        SystemColorScheme scheme(QDBusConnection("bare"));
        QVERIFY(scheme.dark());
        QSignalSpy changed(&scheme, &SystemColorScheme::darkChanged);
        QTest::qWait(200); // the failed call comes back and changes nothing
        QVERIFY(scheme.dark());
        setPaletteDark(false);
        QVERIFY(!scheme.dark());
        QCOMPARE(changed.size(), 1);
    }
};

QTEST_MAIN(SystemColorSchemeTest)
#include "test_system_color_scheme.moc"
