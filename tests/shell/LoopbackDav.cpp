#include "LoopbackDav.h"

#include <QCryptographicHash>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <csignal>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace tidemark::testing {

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& data) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(data) != data.size()) {
        qFatal("Can't write %s", qPrintable(path));
    }
}

namespace {

quint16 freeLoopbackPort() {
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost) ? probe.serverPort() : 0;
}

} // namespace

LoopbackDav::LoopbackDav(QString davPath, bool tls) : davPath_(std::move(davPath)), tls_(tls) {
    QDir(dir_.path()).mkpath(QStringLiteral("www/dav"));
}

LoopbackDav::~LoopbackDav() {
    stop();
}

QUrl LoopbackDav::url(const QString& path) const {
    return QUrl(
        QStringLiteral("%1://127.0.0.1:%2%3").arg(tls_ ? "https" : "http").arg(port_).arg(path));
}

bool LoopbackDav::start() {
    for (int attempt = 0; attempt < 3 && !running(); ++attempt) {
        port_ = freeLoopbackPort();
        const auto [program, arguments] = command(port_);
        process_.setChildProcessModifier([] {
            setpgid(0, 0);
            prctl(PR_SET_PDEATHSIG, SIGKILL); // gone with its starter, whatever happens to it
        });
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(dir_.filePath(QStringLiteral("stderr.log")));
        process_.start(program, arguments);
        if (!process_.waitForStarted(5000)) {
            qWarning("%s is not installed (scripts/setup installs it)", qPrintable(program));
            return false;
        }
        for (int i = 0; i < 100 && running(); ++i) {
            QTcpSocket probe;
            probe.connectToHost(QHostAddress::LocalHost, port_);
            if (probe.waitForConnected(100)) {
                return true;
            }
            QThread::msleep(50);
        }
        stop();
    }
    qWarning().noquote() << log() << readAll(dir_.filePath(QStringLiteral("stderr.log")));
    return running();
}

void LoopbackDav::kill() {
    if (running()) {
        ::kill(-group(), SIGKILL);
        process_.waitForFinished(5000);
    }
}

void LoopbackDav::stop() {
    if (running()) {
        ::kill(-group(), SIGTERM);
        if (!process_.waitForFinished(5000)) {
            kill();
        }
    }
}

// ---- Apache ----------------------------------------------------------------------------------

ApacheDav::ApacheDav(std::vector<DavUser> users, bool tls)
    : LoopbackDav(QStringLiteral("/dav/"), tls), tls_(tls) {
    QFile::setPermissions(dir_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                           QFile::ReadOther | QFile::ExeOther | QFile::ReadGroup |
                                           QFile::ExeGroup);
    QDir(dir_.path()).mkpath(QStringLiteral("run"));
    QByteArray htpasswd;
    for (const auto& user : users) {
        htpasswd += user.name + ":{SHA}" +
                    QCryptographicHash::hash(user.password, QCryptographicHash::Sha1).toBase64() +
                    "\n";
    }
    writeFile(dir_.filePath(QStringLiteral("htpasswd")), htpasswd);
    if (tls_) {
        QProcess openssl;
        openssl.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt",
                                  "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj",
                                  "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                                  "-keyout", dir_.filePath("key.pem"), "-out", certificatePath()});
        openssl.waitForFinished(30000);
    }
    if (geteuid() == 0) {
        // Apache won't serve as root; its children write as nobody.
        if (const passwd* nobody = getpwnam("nobody")) {
            for (const char* sub : {"www/dav", "run"}) {
                if (chown(qPrintable(dir_.filePath(sub)), nobody->pw_uid, nobody->pw_gid)) {
                    qWarning("chown failed");
                }
            }
        }
    }
}

QString ApacheDav::errorLog() const {
    return QString::fromUtf8(readAll(dir_.filePath(QStringLiteral("error.log"))));
}

int ApacheDav::takeRequestCount() {
    QFile log(dir_.filePath(QStringLiteral("access.log")));
    if (!log.open(QIODevice::ReadOnly) || !log.seek(accessLogRead_)) {
        return 0;
    }
    const QByteArray lines = log.readAll();
    accessLogRead_ += lines.size();
    return static_cast<int>(lines.count('\n'));
}

std::pair<QString, QStringList> ApacheDav::command(quint16 port) {
    const QString d = dir_.path();
    QString conf;
    conf += QStringLiteral("ServerRoot \"%1\"\nServerName 127.0.0.1\nListen 127.0.0.1:%2\n"
                           "PidFile \"%1/httpd.pid\"\nErrorLog \"%1/error.log\"\n"
                           "LogLevel warn\nMutex file:%1/run default\n"
                           "DocumentRoot \"%1/www\"\nDavLockDB \"%1/run/DavLock\"\n"
                           "CustomLog \"%1/access.log\" \"%m %U %>s\"\n")
                .arg(d)
                .arg(port);
    if (geteuid() == 0) {
        conf += "User nobody\nGroup nogroup\n";
    }
    for (const char* module : {"mpm_event", "authn_core", "authn_file", "authz_core", "authz_user",
                               "auth_basic", "dav", "dav_fs", "alias"}) {
        conf +=
            QStringLiteral("LoadModule %1_module /usr/lib/apache2/modules/mod_%1.so\n").arg(module);
    }
    if (tls_) {
        conf += QStringLiteral("LoadModule ssl_module /usr/lib/apache2/modules/mod_ssl.so\n"
                               "SSLEngine on\nSSLCertificateFile \"%1/cert.pem\"\n"
                               "SSLCertificateKeyFile \"%1/key.pem\"\n")
                    .arg(d);
    }
    conf += QStringLiteral("RedirectMatch 500 \"^/(broken/|dav/.*/server-error\\.json$)\"\n"
                           "<Location /dav/>\n  Dav On\n  AuthType Basic\n"
                           "  AuthName \"Tide Mark test\"\n  AuthUserFile \"%1/htpasswd\"\n"
                           "  Require valid-user\n</Location>\n")
                .arg(d);
    writeFile(dir_.filePath(QStringLiteral("httpd.conf")), conf.toUtf8());
    return {QStringLiteral("/usr/sbin/apache2"),
            {"-f", dir_.filePath(QStringLiteral("httpd.conf")), "-DFOREGROUND"}};
}

// ---- rclone ----------------------------------------------------------------------------------

RcloneDav::RcloneDav(DavUser user) : LoopbackDav(QStringLiteral("/"), false), user_(user) {
    writeFile(dir_.filePath(QStringLiteral("rclone.conf")), {});
}

std::pair<QString, QStringList> RcloneDav::command(quint16 port) {
    // Listings are read from the disk each time, so that a test may change the folder itself.
    return {QStringLiteral("rclone"),
            {"serve", "webdav", davRoot(), "--addr", QStringLiteral("127.0.0.1:%1").arg(port),
             "--user", QString::fromUtf8(user_.name), "--pass", QString::fromUtf8(user_.password),
             "--config", dir_.filePath(QStringLiteral("rclone.conf")), "--dir-cache-time", "0s",
             "--log-file", dir_.filePath(QStringLiteral("rclone.log"))}};
}

QString RcloneDav::log() const {
    return QString::fromUtf8(readAll(dir_.filePath(QStringLiteral("rclone.log"))));
}

// ---- a session bus ---------------------------------------------------------------------------

bool isolateCloudSession(QProcess& bus, const QString& folder) {
    qputenv("XDG_CACHE_HOME", QDir(folder).filePath(QStringLiteral("cache")).toUtf8());
    qputenv("XDG_STATE_HOME", QDir(folder).filePath(QStringLiteral("state")).toUtf8());
    const QString conf = QDir(folder).filePath(QStringLiteral("bus.conf"));
    writeFile(conf, QStringLiteral("<busconfig><type>session</type><listen>unix:tmpdir=%1"
                                   "</listen><policy context=\"default\"><allow "
                                   "send_destination=\"*\" eavesdrop=\"true\"/><allow "
                                   "eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
                                   "</busconfig>\n")
                        .arg(folder)
                        .toUtf8());
    bus.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    bus.start("dbus-daemon", {"--config-file", conf, "--nofork", "--print-address=1"});
    if (!bus.waitForStarted() || !bus.waitForReadyRead(10000)) {
        return false;
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    return true;
}

} // namespace tidemark::testing
