#include "browsing/ShareEventImage.h"

#include <QClipboard>
#include <QColor>
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
#include <algorithm>

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

namespace {

void grab(QQuickItem* item, QSize size, std::function<void(QImage)> done) {
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

/// The picture with its alpha channel from two renders, on black and on white: where the two
/// differ, the background showed through. Exact for every renderer, including those whose
/// render target has no alpha.
QImage fromMattes(const QImage& onBlack, const QImage& onWhite) {
    if (onBlack.isNull() || onBlack.size() != onWhite.size()) {
        return {};
    }
    QImage picture(onBlack.size(), QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y) {
        const auto* black = reinterpret_cast<const QRgb*>(onBlack.constScanLine(y));
        const auto* white = reinterpret_cast<const QRgb*>(onWhite.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int shown =
                std::max({qRed(white[x]) - qRed(black[x]), qGreen(white[x]) - qGreen(black[x]),
                          qBlue(white[x]) - qBlue(black[x]), 0});
            const int alpha = 255 - std::min(shown, 255);
            const auto channel = [alpha](int premultiplied) {
                return alpha == 0 ? 0 : std::min(255, premultiplied * 255 / alpha);
            };
            out[x] = qRgba(channel(qRed(black[x])), channel(qGreen(black[x])),
                           channel(qBlue(black[x])), alpha);
        }
    }
    return picture;
}

} // namespace

void ShareEventImage::render(QQuickItem* item, qreal scale, std::function<void(QImage)> done) {
    if (!item || !item->window() || item->width() <= 0 || item->height() <= 0) {
        done({});
        return;
    }
    const QSize size(qRound(item->width() * scale), qRound(item->height() * scale));
    QPointer<QQuickItem> guarded(item);
    item->setProperty("matte", QColor(Qt::black));
    grab(item, size, [guarded, size, done = std::move(done)](QImage onBlack) mutable {
        if (!guarded || onBlack.isNull()) {
            done({});
            return;
        }
        guarded->setProperty("matte", QColor(Qt::white));
        grab(guarded, size,
             [guarded, onBlack = std::move(onBlack), done = std::move(done)](QImage onWhite) {
                 if (guarded) {
                     guarded->setProperty("matte", QColor(Qt::transparent));
                 }
                 done(fromMattes(onBlack, onWhite));
             });
    });
}

QUrl ShareEventImage::imageUrl() const {
    if (file_.isEmpty()) {
        return {};
    }
    // A new query for each picture, so that an Image showing the last one loads it again.
    QUrl url = QUrl::fromLocalFile(file_);
    url.setQuery(QStringLiteral("picture=%1").arg(generation_));
    return url;
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
        ++self->generation_;
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
