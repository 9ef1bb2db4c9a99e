#include "widgetapp/WidgetModel.h"

#include "calendar/Calendar.h"
#include "engine/Occurrences.h"
#include "platform/linux/DBusWidgetCenter.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "toolkit/EventRowModel.h"
#include "widgets/IntentHandler.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QRect>
#include <QSaveFile>
#include <QSettings>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>
#include <QUuid>
#include <cmath>
#include <sys/timerfd.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcWidget, "tidemark.widget", QtInfoMsg)

namespace tidemark {

namespace {

constexpr const char* kEntryPrefix = "org.tidemark.TideMark.Widget-";
const QStringList kWidgetSizes{QStringLiteral("small"), QStringLiteral("medium"),
                               QStringLiteral("large"), QStringLiteral("lock")};

QString configHome() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

QString launcherEntryPath(const QString& widgetId) {
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) +
           QStringLiteral("/") + QLatin1String(kEntryPrefix) + widgetId +
           QStringLiteral(".desktop");
}

QString autostartEntryPath(const QString& widgetId) {
    return configHome() + QStringLiteral("/autostart/") + QLatin1String(kEntryPrefix) + widgetId +
           QStringLiteral(".desktop");
}

bool writeFile(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}

/// What a widget shows of one event, from the app's own row rules and the engine.
QVariantMap eventMap(const eventObjectAtWidget& event, Date now, const Calendar& calendar) {
    const auto row = eventRowData(eventAs<eventInfo>(event), now, calendar);
    QString nextDate;
    const auto list = occurrenceList(event, now, calendar);
    if (!list.empty()) {
        if (auto date = calendar.date(list.front())) {
            nextDate = QString::fromStdString(calendar.formatAbbreviated(*date));
        }
    }
    return {
        {QStringLiteral("eventId"), QString::fromStdString(event.eventId)},
        {QStringLiteral("title"), row.title},
        {QStringLiteral("colorName"), row.colorName},
        {QStringLiteral("dayCountNumber"), row.dayCountNumber},
        {QStringLiteral("dayCountUnit"), row.dayCountUnit},
        {QStringLiteral("isToday"), row.isToday},
        {QStringLiteral("typeText"), row.typeText},
        {QStringLiteral("detailsText"), row.detailsText},
        {QStringLiteral("datesText"), row.datesText},
        {QStringLiteral("nextDateText"), row.nextDateText},
        {QStringLiteral("nextDate"), nextDate},
    };
}

} // namespace

WidgetModel::WidgetModel(QString widgetId, Choice choice, std::function<bool()> darkScheme,
                         QObject* parent)
    : QObject(parent), widgetId_(std::move(widgetId)), choice_(std::move(choice)),
      darkScheme_(std::move(darkScheme)) {
    // Several signals of one publication (the bus and each changed file) make one reload.
    coalesce_.setSingleShot(true);
    coalesce_.setInterval(30);
    connect(&coalesce_, &QTimer::timeout, this, &WidgetModel::reload);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        watchFiles();
        coalesce_.start();
    });
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, [this] {
        watchFiles();
        coalesce_.start();
    });
    reload();
}

WidgetModel::~WidgetModel() {
    if (midnightFd_ >= 0) {
        delete midnightNotifier_; // before its descriptor goes
        ::close(midnightFd_);
    }
}

void WidgetModel::startWatching() {
    QDBusConnection::sessionBus().connect(QString(), QLatin1String(kWidgetsObjectPath),
                                          QLatin1String(kWidgetsInterface),
                                          QLatin1String(kReloadSignal), &coalesce_, SLOT(start()));
    watchFiles();
    if (calendarEnvironment().fixedNow) {
        return; // a frozen clock never reaches midnight
    }
    midnightFd_ = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (midnightFd_ < 0) {
        qCWarning(lcWidget) << "can't create the midnight timer:" << qt_error_string(errno);
        return;
    }
    midnightNotifier_ = new QSocketNotifier(midnightFd_, QSocketNotifier::Read, this);
    connect(midnightNotifier_, &QSocketNotifier::activated, this, [this] {
        std::uint64_t expirations = 0;
        [[maybe_unused]] const auto n = ::read(midnightFd_, &expirations, sizeof expirations);
        reload(); // midnight, or a changed clock: either way the counts may have moved
        armMidnight();
    });
    armMidnight();
}

void WidgetModel::watchFiles() {
    // The folder tells of the suite's files coming and going; the database and its write-ahead
    // log tell of each commit. The watcher drops a file that was replaced, so they are added
    // again after every change.
    const auto file = QString::fromStdString(suiteDefaultsPath(kSharedSuiteName).string());
    const auto folder = QFileInfo(file).absolutePath();
    QDir().mkpath(folder);
    QStringList wanted{folder};
    for (const auto& path : {file, file + QStringLiteral("-wal")}) {
        if (QFile::exists(path)) {
            wanted << path;
        }
    }
    const auto watched = watcher_.files() + watcher_.directories();
    for (const auto& path : wanted) {
        if (!watched.contains(path)) {
            watcher_.addPath(path);
        }
    }
}

void WidgetModel::armMidnight() {
    const auto& calendar = Calendar::current();
    // A day lasts 23 to 25 hours: the day start 36 hours after today's is tomorrow's.
    const Date next =
        dayStartOf(dayStartOf(now(), calendar).addingTimeInterval(36 * 3600.0), calendar);
    itimerspec wakeAt{};
    wakeAt.it_value.tv_sec = static_cast<time_t>(std::ceil(next.secondsSince1970));
    if (timerfd_settime(midnightFd_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &wakeAt,
                        nullptr) != 0) {
        qCWarning(lcWidget) << "can't set the midnight timer:" << qt_error_string(errno);
    }
}

void WidgetModel::reload() {
    dark_ = darkScheme_ && darkScheme_();
    const auto published = publishedWidgetEvents();
    const auto& calendar = Calendar::current();
    const Date current = now();
    event_.clear();
    rows_.clear();
    eventOptions_.clear();
    if (!published) {
        status_ = Status::NoData;
    } else {
        // The events to choose from, as the configuration side offers them.
        for (const auto& item : eventBasicInfos(*published).items) {
            eventOptions_.append(QVariantMap{
                {QStringLiteral("identifier"), QString::fromStdString(item.identifier)},
                {QStringLiteral("displayString"), QString::fromStdString(item.displayString)}});
        }

        if (choice_.size == QLatin1String("large")) {
            const auto kind =
                eventBasicTypeEnum(choice_.kind).value_or(EventBasicTypeEnum::unknown);
            for (const auto& event : largeWidgetEvents(*published, kind, current, calendar)) {
                rows_.append(eventMap(event, current, calendar));
            }
            status_ = Status::Ready;
        } else if (choice_.eventId.isEmpty()) {
            status_ = Status::Unchosen;
        } else {
            const auto id = choice_.eventId.toStdString();
            const auto found = std::find_if(published->begin(), published->end(),
                                            [&](const auto& e) { return e.eventId == id; });
            if (found == published->end()) {
                status_ = Status::Deleted;
            } else {
                event_ = eventMap(*found, current, calendar);
                status_ = Status::Ready;
            }
        }
    }
    qCInfo(lcWidget).noquote() << "reloaded" << QVariant::fromValue(status_).toString()
                               << event_.value(QStringLiteral("title")).toString()
                               << event_.value(QStringLiteral("dayCountNumber")).toString()
                               << "rows" << rows_.size();
    emit changed();
}

QString WidgetModel::settingsPath() const {
    return configHome() + QStringLiteral("/tidemark/widgets/") + widgetId_ + QStringLiteral(".ini");
}

std::optional<WidgetModel::Choice> WidgetModel::keptChoice(const QString& widgetId) {
    const auto path =
        configHome() + QStringLiteral("/tidemark/widgets/") + widgetId + QStringLiteral(".ini");
    if (widgetId.isEmpty() || !QFile::exists(path)) {
        return std::nullopt;
    }
    QSettings settings(path, QSettings::IniFormat);
    Choice choice;
    choice.size = settings.value(QStringLiteral("size"), choice.size).toString();
    choice.eventId = settings.value(QStringLiteral("eventId")).toString();
    choice.kind = settings.value(QStringLiteral("kind"), 0).toInt();
    return choice;
}

std::optional<QRect> WidgetModel::keptGeometry(const QString& widgetId) {
    const auto path =
        configHome() + QStringLiteral("/tidemark/widgets/") + widgetId + QStringLiteral(".ini");
    if (widgetId.isEmpty() || !QFile::exists(path)) {
        return std::nullopt;
    }
    QSettings settings(path, QSettings::IniFormat);
    const auto rect = settings.value(QStringLiteral("geometry")).toRect();
    return rect.isValid() ? std::optional<QRect>(rect) : std::nullopt;
}

void WidgetModel::configure(const QString& size, const QString& eventId, int kind) {
    if (widgetId_.isEmpty()) {
        widgetId_ = QUuid::createUuid().toString(QUuid::Id128).left(12);
    }
    if (kWidgetSizes.contains(size)) {
        choice_.size = size;
    }
    choice_.eventId = eventId;
    choice_.kind = eventBasicTypeEnum(kind) ? kind : 0;
    {
        QDir().mkpath(QFileInfo(settingsPath()).absolutePath());
        QSettings settings(settingsPath(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("size"), choice_.size);
        settings.setValue(QStringLiteral("eventId"), choice_.eventId);
        settings.setValue(QStringLiteral("kind"), choice_.kind);
    }
    // A launcher entry to start the widget again and an autostart entry to bring it back at
    // login, both for this widget alone.
    const QByteArray exec = QStringLiteral("\"%1\" --id %2")
                                .arg(QCoreApplication::applicationFilePath(), widgetId_)
                                .toUtf8();
    const QByteArray name = qtTrId("widgetEntryName").toUtf8();
    const QByteArray entry = "[Desktop Entry]\nType=Application\nName=" + name + " (" +
                             choice_.size.toUtf8() + ")\nExec=" + exec +
                             "\nIcon=org.tidemark.TideMark\nTerminal=false\nNoDisplay=true\n"
                             "StartupNotify=false\n";
    if (!writeFile(launcherEntryPath(widgetId_), entry) ||
        !writeFile(autostartEntryPath(widgetId_), entry + "X-GNOME-Autostart-enabled=true\n")) {
        qCWarning(lcWidget) << "could not write the entries of widget" << widgetId_;
    }
    reload();
}

void WidgetModel::keepGeometry(int x, int y, int width, int height) {
    if (widgetId_.isEmpty() || !QFile::exists(settingsPath())) {
        return;
    }
    QSettings settings(settingsPath(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("geometry"), QRect(x, y, width, height));
}

void WidgetModel::removeWidget() {
    if (!widgetId_.isEmpty()) {
        QFile::remove(settingsPath());
        QFile::remove(launcherEntryPath(widgetId_));
        QFile::remove(autostartEntryPath(widgetId_));
    }
    QCoreApplication::quit();
}

void WidgetModel::openApp() {
    QDesktopServices::openUrl(QUrl(QStringLiteral("tidemark:widget")));
}

QString WidgetModel::kindName(int kind) const {
    return qtTrId(QStringLiteral("widgetKind%1").arg(kind).toLatin1().constData());
}

} // namespace tidemark
