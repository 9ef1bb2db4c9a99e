// WebDAV servers on a loopback port for the cloud tests and the benchmark, each run from a
// temporary folder of its own (no root needed; as root Apache serves as nobody) and ended with
// the program that started it, whatever happens to that program.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>
#include <sys/types.h>
#include <vector>

namespace tidemark::testing {

struct DavUser {
    QByteArray name;
    QByteArray password;
};

class LoopbackDav {
public:
    virtual ~LoopbackDav();
    LoopbackDav(const LoopbackDav&) = delete;
    LoopbackDav& operator=(const LoopbackDav&) = delete;

    /// Starts the server on a free port (a new one at each start) and waits until it listens.
    bool start();
    bool running() const { return process_.state() == QProcess::Running; }
    /// The server's process group, for ending it from any thread.
    pid_t group() const { return static_cast<pid_t>(process_.processId()); }
    /// Ends the server and all its processes at once, connections and all.
    void kill();
    void stop();

    /// The address of the served folder, ending in "/".
    QUrl address() const { return url(davPath_); }
    /// Any path on the server.
    QUrl url(const QString& path) const;
    /// The served folder on disk.
    QString davRoot() const { return dir_.filePath(QStringLiteral("www/dav")); }
    QString folder() const { return dir_.path(); }

protected:
    LoopbackDav(QString davPath, bool tls);
    /// The program and its arguments for a server on `port`.
    virtual std::pair<QString, QStringList> command(quint16 port) = 0;
    virtual QString log() const = 0;

    QTemporaryDir dir_;

private:
    QString davPath_;
    bool tls_;
    QProcess process_;
    quint16 port_ = 0;
};

/// Apache httpd with mod_dav under /dav/ (Basic authentication against a password file of its
/// own, one entry per user), a path that always answers 500 (/broken/, and any
/// "server-error.json" under /dav/), optionally over TLS with a self-signed certificate, and an
/// access log of one line per request.
class ApacheDav final : public LoopbackDav {
public:
    explicit ApacheDav(std::vector<DavUser> users, bool tls = false);
    QString certificatePath() const { return dir_.filePath(QStringLiteral("cert.pem")); }
    QString errorLog() const;
    /// Requests answered since the start of the server (or the last call).
    int takeRequestCount();

protected:
    std::pair<QString, QStringList> command(quint16 port) override;
    QString log() const override { return errorLog(); }

private:
    bool tls_;
    qint64 accessLogRead_ = 0;
};

/// `rclone serve webdav` on the folder, with one user.
class RcloneDav final : public LoopbackDav {
public:
    explicit RcloneDav(DavUser user);

protected:
    std::pair<QString, QStringList> command(quint16 port) override;
    QString log() const override;

private:
    DavUser user_;
};

/// Points this process's cache, state and session bus into `folder`: a session bus with nothing
/// on it, so that no Secret Service answers. False when dbus-daemon can't be started.
bool isolateCloudSession(QProcess& bus, const QString& folder);

QByteArray readAll(const QString& path);
void writeFile(const QString& path, const QByteArray& data);

} // namespace tidemark::testing
