#include "shell/Screenshots.h"

#include "records/Store.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>
#include <QVariant>
#include <memory>

namespace tidemark {

namespace {

// One picture: a tab of the main screen, or a page file pushed above it.
struct Shot {
    QString tab;
    QString page;
    QString scheme;
    QString qmlFile;       ///< set for a pushed page
    QVariantMap arguments; ///< the page's properties
    bool takesEventId = false;
};

// The pages pushed above the main screen, each with the properties it is opened with. Pages that
// show an event get the first event of the store.
struct PageEntry {
    const char* qmlFile;
    const char* mode; ///< "" or a suffix of the picture's name
    QVariantMap arguments;
    bool takesEventId;
};

QList<PageEntry> pageEntries() {
    const QVariantMap none;
    const QVariantMap addForm{{"editOrAddNewEventCheckValue", false},
                              {"eventId", QString()},
                              {"resetAllDataWhenEnterFromCardView", true}};
    const QVariantMap editForm{{"editOrAddNewEventCheckValue", true},
                               {"resetAllDataWhenEnterFromCardView", true}};
    return {
        {"AddNewEventPage.qml", "add", addForm, false},
        {"AddNewEventPage.qml", "edit", editForm, true},
        {"RepeatEventSettingPage.qml", "", none, false},
        {"EditRepeatEventSettingPage.qml", "", none, true},
        {"NotiSettingPage.qml", "", none, false},
        {"EditNotiSettingPage.qml", "", none, true},
        {"CardViewForEventObject.qml", "", none, true},
        {"EditEventTitleContentPage.qml", "", none, true},
        {"EditEventStartDatePage.qml", "", none, true},
        {"EditShareSettingPage.qml", "", none, true},
        {"MemoForCardViewPage.qml", "", none, true},
        {"MemoForCardViewAddMemoHalfPage.qml", "", none, true},
        {"CenterPopupForAddOrEditMemoView.qml", "", none, true},
        {"SettingViewSubViewForNotiSetting.qml", "", none, false},
    };
}

QList<Shot> shots() {
    QList<Shot> list;
    const QList<QPair<QString, QString>> pages = {
        {QStringLiteral("summaryView"), QStringLiteral("calendar")},
        {QStringLiteral("eventListView"), QStringLiteral("list")},
        {QStringLiteral("moreView"), QStringLiteral("settings")}};
    const QStringList schemes = {QStringLiteral("light"), QStringLiteral("dark")};
    for (const auto& scheme : schemes) {
        for (const auto& [tab, page] : pages) {
            list.append({tab, page, scheme, {}, {}, false});
        }
    }
    // Pages of the editing area that are part of this build.
    for (const auto& entry : pageEntries()) {
        const QString file = QString::fromLatin1(entry.qmlFile);
        if (!QFile::exists(QStringLiteral(":/qml/") + file)) {
            continue;
        }
        QString page = file.chopped(4);
        if (*entry.mode) {
            page += QLatin1Char('-') + QString::fromLatin1(entry.mode);
        }
        for (const auto& scheme : schemes) {
            list.append({{}, page, scheme, file, entry.arguments, entry.takesEventId});
        }
    }
    return list;
}

QString fileName(const Shot& shot) {
    return QStringLiteral("%1-%2-%3.png")
        .arg(shot.qmlFile.isEmpty() ? QStringLiteral("main") : QStringLiteral("page"), shot.page,
             shot.scheme);
}

// The eventId of the first event in store order, "" for an empty store.
QString firstEventId() {
    const auto events = Store::open().objects<eventInfo>();
    return events.empty() ? QString() : QString::fromStdString(events.front().eventId);
}

// Time for a page's first appearance (its queued fills) to land before the picture.
constexpr int kSettleMs = 400;

void takeNext(QQuickWindow* window, const QString& folder, std::shared_ptr<QList<Shot>> todo,
              bool allSaved, std::function<void(bool)> done) {
    if (todo->isEmpty()) {
        QMetaObject::invokeMethod(window, "showPageForPicture", Q_ARG(QVariant, QString()),
                                  Q_ARG(QVariant, QVariantMap()), Q_ARG(QVariant, QString()));
        QMetaObject::invokeMethod(window, "showForPicture", Q_ARG(QVariant, QString()),
                                  Q_ARG(QVariant, QString()));
        done(allSaved);
        return;
    }
    const Shot shot = todo->takeFirst();
    if (shot.qmlFile.isEmpty()) {
        QMetaObject::invokeMethod(window, "showForPicture", Q_ARG(QVariant, shot.tab),
                                  Q_ARG(QVariant, shot.scheme));
    } else {
        QVariantMap arguments = shot.arguments;
        if (shot.takesEventId) {
            arguments.insert(QStringLiteral("eventId"), firstEventId());
        }
        QMetaObject::invokeMethod(window, "showPageForPicture", Q_ARG(QVariant, shot.qmlFile),
                                  Q_ARG(QVariant, arguments), Q_ARG(QVariant, shot.scheme));
    }
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
