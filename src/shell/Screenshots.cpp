#include "shell/Screenshots.h"

#include <QDir>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>
#include <QVariant>
#include <memory>

namespace tidemark {

namespace {

struct Shot {
    QString tab;
    QString page;
    QString scheme;
};

QList<Shot> shots() {
    QList<Shot> list;
    const QList<QPair<QString, QString>> pages = {
        {QStringLiteral("summaryView"), QStringLiteral("calendar")},
        {QStringLiteral("eventListView"), QStringLiteral("list")},
        {QStringLiteral("moreView"), QStringLiteral("settings")}};
    for (const auto& scheme : {QStringLiteral("light"), QStringLiteral("dark")}) {
        for (const auto& [tab, page] : pages) {
            list.append({tab, page, scheme});
        }
    }
    return list;
}

QString fileName(const Shot& shot) {
    return QStringLiteral("main-%1-%2.png").arg(shot.page, shot.scheme);
}

// Time for a page's first appearance (its queued fills) to land before the picture.
constexpr int kSettleMs = 400;

void takeNext(QQuickWindow* window, const QString& folder, std::shared_ptr<QList<Shot>> todo,
              bool allSaved, std::function<void(bool)> done) {
    if (todo->isEmpty()) {
        QMetaObject::invokeMethod(window, "showForPicture", Q_ARG(QVariant, QString()),
                                  Q_ARG(QVariant, QString()));
        done(allSaved);
        return;
    }
    const Shot shot = todo->takeFirst();
    QMetaObject::invokeMethod(window, "showForPicture", Q_ARG(QVariant, shot.tab),
                              Q_ARG(QVariant, shot.scheme));
    QTimer::singleShot(kSettleMs, window, [=] {
        const bool saved = window->grabWindow().save(QDir(folder).filePath(fileName(shot)));
        takeNext(window, folder, todo, allSaved && saved, done);
    });
}

} // namespace

QStringList pagePictureNames() {
    QStringList names;
    for (const auto& shot : shots()) {
        names << fileName(shot);
    }
    return names;
}

void savePagePictures(QQuickWindow* window, const QString& folder, std::function<void(bool)> done) {
    QDir().mkpath(folder);
    takeNext(window, folder, std::make_shared<QList<Shot>>(shots()), true, std::move(done));
}

} // namespace tidemark
