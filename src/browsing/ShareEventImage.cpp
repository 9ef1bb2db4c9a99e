#include "browsing/ShareEventImage.h"

#include <QClipboard>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QStandardPaths>
#include <QVariantMap>

namespace tidemark {

namespace {

const QString kPortalService = QStringLiteral("org.freedesktop.portal.Desktop");

QString cacheFileFor(const QString& eventId) {
    const QString folder =
        QDir(QStandardPaths::writableLocation(QStandardPaths::CacheLocation)).filePath("shared");
    QDir().mkpath(folder);
    QString name = eventId;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    return QDir(folder).filePath(QStringLiteral("event-%1.png").arg(name));
}

} // namespace

void ShareEventImage::render(QQuickItem* item, qreal scale, std::function<void(QImage)> done) {
    if (!item || !item->window() || item->width() <= 0 || item->height() <= 0) {
        done({});
        return;
    }
    const QSize size(qRound(item->width() * scale), qRound(item->height() * scale));
    auto result = item->grabToImage(size);
    if (!result) {
        done({});
        return;
    }
    // The result lives until `ready`; the connection holds it.
    QObject::connect(result.data(), &QQuickItemGrabResult::ready, result.data(),
                     [result, done = std::move(done)] {
                         done(result->image().convertToFormat(QImage::Format_ARGB32));
                     });
}

QUrl ShareEventImage::imageUrl() const {
    return file_.isEmpty() ? QUrl() : QUrl::fromLocalFile(file_);
}

QUrl ShareEventImage::picturesFolder() const {
    return QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
}

void ShareEventImage::setLoading(bool loading) {
    if (loading_ != loading) {
        loading_ = loading;
        emit loadingChanged();
    }
}

void ShareEventImage::make(QQuickItem* card) {
    setLoading(true);
    const QString eventId = card ? card->property("eventId").toString() : QString();
    QPointer<ShareEventImage> self(this);
    render(card, kScale, [self, eventId](QImage image) {
        if (!self) {
            return;
        }
        self->setLoading(false);
        if (image.isNull()) {
            emit self->failed();
            return;
        }
        self->image_ = std::move(image);
        self->file_ = cacheFileFor(eventId);
        if (!self->image_.save(self->file_, "PNG")) {
            self->file_.clear();
        }
        emit self->imageChanged();
    });
}

bool ShareEventImage::saveTo(const QUrl& file) const {
    return !image_.isNull() && file.isLocalFile() && image_.save(file.toLocalFile(), "PNG");
}

void ShareEventImage::copyToClipboard() const {
    if (!image_.isNull()) {
        QGuiApplication::clipboard()->setImage(image_);
    }
}

bool ShareEventImage::openWithOtherApp() {
    if (file_.isEmpty()) {
        return false;
    }
    const QString path = file_;
    auto bus = QDBusConnection::sessionBus();
    QFile file(path);
    if (bus.isConnected() && bus.interface()->isServiceRegistered(kPortalService) &&
        file.open(QIODevice::ReadOnly)) {
        auto call = QDBusMessage::createMethodCall(
            kPortalService, QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.OpenURI"), QStringLiteral("OpenFile"));
        // The descriptor is duplicated into the message; the file may close after.
        call << QString() << QVariant::fromValue(QDBusUnixFileDescriptor(file.handle()))
             << QVariantMap{{QStringLiteral("ask"), true}};
        auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [path](QDBusPendingCallWatcher* finished) {
                    if (finished->isError()) {
                        QProcess::startDetached(QStringLiteral("xdg-open"), {path});
                    }
                    finished->deleteLater();
                });
        return true;
    }
    return QProcess::startDetached(QStringLiteral("xdg-open"), {path});
}

} // namespace tidemark
