#include "settings/CloudPageModel.h"

#include "cloud/addEditAndDelDataAtCloud.h"
#include "cloud/cloudKitFunc.h"
#include "platform/linux/CloudAccount.h"
#include "platform/linux/QtDispatcher.h"
#include "platform/linux/WebDavCloudService.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <atomic>
#include <cstdio>
#include <iostream>
#include <string>
#include <termios.h>
#include <unistd.h>

namespace tidemark {

namespace {

/// The four conditions under which the page's buttons transfer anything.
bool accountIsHealthy() {
    cloudKitFunc cloud;
    return cloud.userCloudAccStatus.get() && !cloud.cloudFuncNotActiveBecauseIdChanged.get() &&
           cloud.eventZoneStatuAtThisDevice.get() && cloud.memoZoneStatuAtThisDevice.get();
}

std::string presentTime() {
    return QDateTime::currentDateTime()
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
        .toStdString();
}

/// The password of a run without a window: the Secret Service's when it has one, else the
/// environment's TIDEMARK_CLOUD_PASSWORD (removed from the environment once read), else one line
/// of standard input, read without echo from a terminal. What is found lives in this process's
/// memory only.
void findHeadlessPassword() {
    CloudAccount account;
    if (!account.configured()) {
        return;
    }
    std::optional<QString> known;
    QEventLoop asking;
    QObject context;
    account.readPassword(&context, [&](std::optional<QString> password) {
        known = std::move(password);
        asking.quit();
    });
    asking.exec();
    if (known) {
        return;
    }
    if (qEnvironmentVariableIsSet("TIDEMARK_CLOUD_PASSWORD")) {
        account.keepPasswordInMemory(qEnvironmentVariable("TIDEMARK_CLOUD_PASSWORD"));
        qunsetenv("TIDEMARK_CLOUD_PASSWORD");
        return;
    }
    termios echoing{};
    const bool terminal = isatty(STDIN_FILENO) != 0 && tcgetattr(STDIN_FILENO, &echoing) == 0;
    if (terminal) {
        std::fprintf(stderr, "Password of %s at %s: ", qPrintable(account.userName()),
                     qPrintable(account.serverAddress().toDisplayString()));
        termios silent = echoing;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    std::string line;
    const bool read = static_cast<bool>(std::getline(std::cin, line));
    if (terminal) {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &echoing);
        std::fprintf(stderr, "\n");
    }
    if (read && !line.empty()) {
        account.keepPasswordInMemory(QString::fromStdString(line));
    }
}

} // namespace

// ---- CloudActivity ----------------------------------------------------------------------------

CloudActivity& CloudActivity::instance() {
    static CloudActivity* activity = [] {
        auto* made = new CloudActivity;
        made->setParent(QCoreApplication::instance());
        return made;
    }();
    return *activity;
}

CloudActivity::CloudActivity() {
    cloudKitFunc cloud;
    switchWasOn_ = cloud.cloudkitFuncStatus.get();
    switchObservation_ =
        cloud.cloudkitFuncStatus.observe([this] { switchChanged(); }, queuedOn(this));
}

void CloudActivity::switchChanged() {
    cloudKitFunc cloud;
    const bool on = cloud.cloudkitFuncStatus.get();
    const bool turnedOn = on && !switchWasOn_;
    switchWasOn_ = on;
    if (!turnedOn) {
        return; // turned off: the per-change sync simply ends
    }
    setLoading(true);
    cloud.checkCloudAccountAndZones();
    QTimer::singleShot(1280, this, [this] {
        cloudKitFunc now;
        if (now.cloudFuncNotActiveBecauseIdChanged.get()) {
            emit identityChangeNoticed();
        }
        if (accountIsHealthy()) {
            startUpload(false);
        }
        setLoading(false);
    });
}

void CloudActivity::setLoading(bool on) {
    if (loading_ != on) {
        loading_ = on;
        emit loadingChanged();
    }
}

void CloudActivity::showProgress(std::size_t done, std::size_t total, bool finished) {
    progressText_ = finished ? QString() : qtTrId("cloudRecordsDoneString").arg(done).arg(total);
    emit progressTextChanged();
}

void CloudActivity::startUpload(bool manual) {
    // The backup pauses a second after every full batch: on a thread of its own, so that the
    // window keeps drawing.
    QPointer<CloudActivity> self(this);
    auto* worker = QThread::create([self, manual] {
        addEditAndDelDataAtCloud cloud;
        cloud.uploadAllDataToCloud([self](const CloudProgress& p) {
            QMetaObject::invokeMethod(
                self, [self, p] { self->showProgress(p.done, p.total, p.finished); },
                Qt::QueuedConnection);
        });
        if (manual) {
            cloud.lastManuallyBackupTimeStringForiCloudDataTask = presentTime();
        }
        cloud.loadingViewToggleForCloudkitPageBackupButton = false;
    });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    connect(worker, &QThread::finished, this, [this] { showProgress(0, 0, true); });
    worker->start();
}

void CloudActivity::startDownload() {
    QPointer<CloudActivity> self(this);
    auto report = [self](const CloudProgress& p) {
        QMetaObject::invokeMethod(
            self, [self, p] { self->showProgress(p.done, p.total, p.finished); },
            Qt::QueuedConnection);
    };
    addEditAndDelDataAtCloud cloud;
    cloud.downloadAllMemosFromCloud();
    cloud.downloadAllEventsFromCloud(report);
}

// ---- CloudPageModel ---------------------------------------------------------------------------

CloudPageModel::CloudPageModel(QObject* parent) : QObject(parent) {
    auto& activity = CloudActivity::instance();
    connect(&activity, &CloudActivity::loadingChanged, this,
            &CloudPageModel::loadingViewShowUpChanged);
    connect(&activity, &CloudActivity::progressTextChanged, this,
            &CloudPageModel::progressTextChanged);
    connect(&activity, &CloudActivity::identityChangeNoticed, this,
            &CloudPageModel::identityChangeNoticed);
}

bool CloudPageModel::loadingViewShowUp() const {
    return CloudActivity::instance().loading();
}

QString CloudPageModel::progressText() const {
    return CloudActivity::instance().progressText();
}

QString CloudPageModel::serverAddress() const {
    return CloudAccount().serverAddress().toString();
}

void CloudPageModel::setServerAddress(const QString& address) {
    const QString trimmed = address.trimmed();
    if (trimmed == serverAddress()) {
        return;
    }
    if (!trimmed.isEmpty() && !CloudAccount().setServerAddress(QUrl(trimmed))) {
        connectionMessage_ = qtTrId("cloudServerAddressInvalidString");
        emit connectionChanged();
        return;
    }
    if (trimmed.isEmpty()) {
        CloudAccount().setServerAddress(QUrl());
    }
    emit accountChanged();
}

QString CloudPageModel::userName() const {
    return CloudAccount().userName();
}

void CloudPageModel::setUserName(const QString& name) {
    if (name.trimmed() != userName()) {
        CloudAccount().setUserName(name.trimmed());
        emit accountChanged();
    }
}

void CloudPageModel::setSwitch(bool on) {
    cloudKitFunc().cloudkitFuncStatus = on;
}

void CloudPageModel::backup() {
    addEditAndDelDataAtCloud cloud;
    cloud.loadingViewToggleForCloudkitPageBackupButton = true;
    cloudKitFunc().checkCloudAccountAndZones();
    // Decided at once, on the state the last check left.
    if (accountIsHealthy()) {
        CloudActivity::instance().startUpload(true);
    } else {
        cloud.loadingViewToggleForCloudkitPageBackupButton = false;
    }
}

void CloudPageModel::download() {
    addEditAndDelDataAtCloud cloud;
    cloud.loadingViewToggleForCloudkitPageDownloadButton = true;
    if (accountIsHealthy()) {
        CloudActivity::instance().startDownload(); // the event download clears the flag
    } else {
        cloud.loadingViewToggleForCloudkitPageDownloadButton = false;
    }
}

void CloudPageModel::confirmIdentityChange() {
    cloudKitFunc cloud;
    cloud.userIdInfoAtThisDevice = std::string();
    cloud.refreshCloudUserId();
    mainQueue().asyncAfter(2.8, [] { cloudKitFunc().cloudkitFuncStatus = true; });
}

void CloudPageModel::setPassword(const QString& password) {
    QPointer<CloudPageModel> self(this);
    CloudAccount().setPassword(password, this, [self](bool keptInSecretService) {
        if (self && !keptInSecretService) {
            self->connectionMessage_ = qtTrId("cloudPasswordInMemoryString");
            emit self->connectionChanged();
        }
    });
}

void CloudPageModel::testConnection() {
    // The check writes what it finds to the settings the page shows; the test says it in words.
    cloudKitFunc().checkCloudAccountAndZones();
    auto service = std::dynamic_pointer_cast<WebDavCloudService>(sharedCloudService());
    if (!service) {
        return;
    }
    testing_ = true;
    connectionMessage_.clear();
    emit connectionChanged();
    QPointer<CloudPageModel> self(this);
    service->testConnection([self](WebDavCloudService::ConnectionCheck check) {
        QMetaObject::invokeMethod(
            self,
            [self, check] {
                self->testing_ = false;
                self->untrustedFingerprint_ = check.untrustedCertificate;
                self->connectionMessage_ =
                    check.status == CloudAccountStatus::available
                        ? qtTrId("cloudConnectionOkString")
                        : qtTrId("cloudConnectionFailedString")
                              .arg(QString::fromStdString(check.error ? check.error->message
                                                                      : std::string()));
                emit self->connectionChanged();
            },
            Qt::QueuedConnection);
    });
}

void CloudPageModel::trustCertificate() {
    if (untrustedFingerprint_.isEmpty()) {
        return;
    }
    CloudAccount().pinCertificate(untrustedFingerprint_);
    untrustedFingerprint_.clear();
    testConnection();
}

// ---- without a window ------------------------------------------------------------------------

int runHeadlessCloudTransfer(bool backup) {
    findHeadlessPassword();
    cloudKitFunc cloud;
    cloud.checkCloudAccountAndZones();
    // The check's steps end 2.3 s after its start; their answers come meanwhile.
    QEventLoop settle;
    QTimer::singleShot(2600, &settle, &QEventLoop::quit);
    settle.exec();
    const auto codeLine = [&cloud] {
        const std::string code = cloud.errorStringForiCloudDataTask.get();
        if (!code.empty()) {
            std::printf("code %s\n", code.c_str());
        }
        return code.empty();
    };
    if (!accountIsHealthy()) {
        std::printf("0 records %s\n", backup ? "written" : "read");
        codeLine();
        return 1;
    }
    addEditAndDelDataAtCloud transfer;
    if (backup) {
        transfer.loadingViewToggleForCloudkitPageBackupButton = true;
        const CloudUpload upload = transfer.uploadAllDataToCloud();
        transfer.lastManuallyBackupTimeStringForiCloudDataTask = presentTime();
        transfer.loadingViewToggleForCloudkitPageBackupButton = false;
        const CloudUploadOutcome outcome = upload.wait();
        std::printf("%zu records written\n", outcome.recordsWritten);
        const bool noCode = codeLine();
        if (outcome.firstError) {
            std::printf("error %s\n", outcome.firstError->message.c_str());
        }
        return noCode && !outcome.firstError ? 0 : 1;
    }
    // Both downloads report their last page; the event download also clears its flag.
    std::atomic<std::size_t> read{0};
    std::atomic<int> finished{0};
    QEventLoop downloading;
    auto report = [&](const CloudProgress& p) {
        if (p.finished) {
            read += p.done;
            if (++finished == 2) {
                QMetaObject::invokeMethod(&downloading, &QEventLoop::quit, Qt::QueuedConnection);
            }
        }
    };
    transfer.loadingViewToggleForCloudkitPageDownloadButton = true;
    transfer.downloadAllMemosFromCloud(report);
    transfer.downloadAllEventsFromCloud(report);
    downloading.exec();
    std::printf("%zu records read\n", read.load());
    return codeLine() ? 0 : 1;
}

} // namespace tidemark
