#include "shell/Screenshots.h"

#include "browsing/FilteredEventListModel.h"
#include "browsing/ShareEventImage.h"
#include "records/Defaults.h"
#include "records/XdgPaths.h"
#include "shell/QmlTypes.h"
#include "shell/Tour.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <QVariant>
#include <cstdio>
#include <memory>

namespace tidemark {

namespace {

const QStringList& schemes() {
    static const QStringList list = {QStringLiteral("light"), QStringLiteral("dark")};
    return list;
}

QString fileName(const TourStop& stop, const QString& scheme) {
    return stop.page + (stop.mode.isEmpty() ? QString() : QLatin1Char('-') + stop.mode) +
           QLatin1Char('-') + scheme + QStringLiteral(".png");
}

bool copyFolder(const QString& from, const QString& to) {
    if (!QDir(from).exists()) {
        return true;
    }
    bool copied = QDir().mkpath(to);
    QDirIterator files(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString source = files.next();
        const QString target = QDir(to).filePath(QDir(from).relativeFilePath(source));
        copied = QDir().mkpath(QFileInfo(target).path()) && QFile::copy(source, target) && copied;
    }
    return copied;
}

struct Run {
    QQuickWindow* window;
    QString folder;
    std::function<void(bool)> done;
    QList<QPair<TourStop, QString>> todo; // stop and scheme
    bool allSaved = true;
};

// The lock page shows at a launch with the lock wished for; the copy of the data is locked
// for these pictures instead.
constexpr int kLockSettleMs = 600;

// Time for the off-screen card to be laid out before it is rendered.
constexpr int kShareCardSettleMs = 100;

// The share picture of the first event of the list, as share-<eventId>.png; nothing without
// events.
void takeSharePicture(const std::shared_ptr<Run>& run) {
    const QString eventId = FilteredEventListModel().eventIds().value(0);
    auto* engine = qmlEngine(run->window);
    if (eventId.isEmpty() || !engine) {
        run->done(run->allSaved);
        return;
    }
    QQmlComponent component(engine, moduleFileUrl(QStringLiteral("GenImageForEventFromView.qml")));
    auto* card = qobject_cast<QQuickItem*>(
        component.createWithInitialProperties({{QStringLiteral("eventId"), eventId}}));
    if (!card) {
        std::fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        run->allSaved = false;
        run->done(run->allSaved);
        return;
    }
    card->setParentItem(run->window->contentItem());
    card->setX(-card->width() - 64);
    QTimer::singleShot(kShareCardSettleMs, run->window, [run, card, eventId] {
        ShareEventImage::render(card, ShareEventImage::kScale, [run, card, eventId](QImage image) {
            const QString path =
                QDir(run->folder).filePath(QStringLiteral("share-%1.png").arg(eventId));
            run->allSaved = !image.isNull() && image.save(path) && run->allSaved;
            card->deleteLater();
            run->done(run->allSaved);
        });
    });
}

void takeLockPictures(const std::shared_ptr<Run>& run, QStringList schemesLeft) {
    Setting<bool> locked{"APP_FUNC_appLockStatu", false};
    if (schemesLeft.isEmpty()) {
        locked.set(false);
        run->window->setProperty("pictureScheme", QString());
        takeSharePicture(run);
        return;
    }
    const QString scheme = schemesLeft.takeFirst();
    run->window->setProperty("pictureScheme", scheme);
    locked.set(true);
    QTimer::singleShot(kLockSettleMs, run->window, [run, scheme, schemesLeft] {
        const QString path =
            QDir(run->folder).filePath(QStringLiteral("UnlockAppView-%1.png").arg(scheme));
        run->allSaved = run->window->grabWindow().save(path) && run->allSaved;
        takeLockPictures(run, schemesLeft);
    });
}

void takeNext(const std::shared_ptr<Run>& run) {
    if (run->todo.isEmpty()) {
        returnToMainScreen(run->window);
        takeLockPictures(run, schemes());
        return;
    }
    const auto [stop, scheme] = run->todo.takeFirst();
    run->window->setProperty("pictureScheme", scheme);
    walkTourStop(run->window, stop, [run, stop, scheme](QObject* target, const QString& error) {
        if (!target) {
            // A way through a stored event or memo is closed on a store without one.
            std::fprintf(stderr, "%s %s\n",
                         stop.needsEvent ? "Left out:" : "Not reached:", qPrintable(error));
            run->allSaved = run->allSaved && stop.needsEvent;
            takeNext(run);
            return;
        }
        const QString path = QDir(run->folder).filePath(fileName(stop, scheme));
        run->allSaved = run->window->grabWindow().save(path) && run->allSaved;
        takeNext(run);
    });
}

} // namespace

QStringList pagePictureNames() {
    QStringList names;
    for (const auto& scheme : schemes()) {
        for (const auto& stop : tourStops()) {
            names << fileName(stop, scheme);
        }
    }
    for (const auto& scheme : schemes()) {
        names << QStringLiteral("UnlockAppView-%1.png").arg(scheme);
    }
    return names;
}

bool useCopyOfUserData(const QString& folder) {
    const QString data = QString::fromStdString(xdgDataHome().string());
    const QString config = QString::fromStdString(xdgConfigHome().string());
    const QString dataCopy = QDir(folder).filePath(QStringLiteral("data"));
    const QString configCopy = QDir(folder).filePath(QStringLiteral("config"));
    bool copied = QDir().mkpath(dataCopy) && QDir().mkpath(configCopy);
    for (const auto& name :
         {QStringLiteral("tidemark"), QStringLiteral("group.marlowharbor.tideMark")}) {
        copied = copyFolder(QDir(data).filePath(name), QDir(dataCopy).filePath(name)) && copied;
    }
    copied = copyFolder(QDir(config).filePath(QStringLiteral("tidemark")),
                        QDir(configCopy).filePath(QStringLiteral("tidemark"))) &&
             copied;
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataCopy));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configCopy));
    return copied;
}

void savePagePictures(QQuickWindow* window, const QString& folder, std::function<void(bool)> done) {
    QDir().mkpath(folder);
    auto run = std::make_shared<Run>(Run{window, folder, std::move(done), {}});
    for (const auto& scheme : schemes()) {
        for (const auto& stop : tourStops()) {
            run->todo.append({stop, scheme});
        }
    }
    takeNext(run);
}

} // namespace tidemark
