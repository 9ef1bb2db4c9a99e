// What one widget window shows, read from the events the app publishes into the shared suite:
// the chosen event's title, colour, day count and next date (small, medium, lock) or the events
// of a kind, nearest first (large). It reads the suite again when the app announces a
// publication on the session bus or the suite's files change, and at each local midnight; it
// never polls. It keeps the widget's choice under $XDG_CONFIG_HOME/tidemark/widgets/<id>.ini.
#pragma once

#include "records/eventInfo.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <optional>
#include <vector>

namespace tidemark {

class WidgetModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString size READ size NOTIFY changed)
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(Status status READ status NOTIFY changed)
    Q_PROPERTY(QString eventId READ eventId NOTIFY changed)
    Q_PROPERTY(int kind READ kind NOTIFY changed)
    Q_PROPERTY(QVariantMap event READ event NOTIFY changed)
    /// The large size's rows, nearest first: maps like `event`.
    Q_PROPERTY(QVariantList rows READ rows NOTIFY changed)
    /// The events a user can choose, {identifier, displayString}; empty without data.
    Q_PROPERTY(QVariantList eventOptions READ eventOptions NOTIFY changed)
public:
    enum class Status {
        Ready,    ///< data to show
        NoData,   ///< the suite holds no readable widget data: the app has not run yet
        Deleted,  ///< the chosen event is no longer published
        Unchosen, ///< no event chosen yet
    };
    Q_ENUM(Status)

    struct Choice {
        QString size = QStringLiteral("small");
        QString eventId;
        int kind = 0;
    };

    /// `darkScheme` is asked at every reload: whether the widget is drawn dark.
    WidgetModel(QString widgetId, Choice choice, std::function<bool()> darkScheme,
                QObject* parent = nullptr);
    ~WidgetModel() override;

    QString size() const { return choice_.size; }
    bool dark() const { return dark_; }
    Status status() const { return status_; }
    QString eventId() const { return choice_.eventId; }
    int kind() const { return choice_.kind; }
    QVariantMap event() const { return event_; }
    QVariantList rows() const { return rows_; }
    QVariantList eventOptions() const { return eventOptions_; }

    /// Listens for publications and arms the midnight timer.
    void startWatching();

    /// Reads the suite again and recomputes everything shown.
    Q_INVOKABLE void reload();
    /// Keeps a new choice (size, event and kind) for this widget, writes its launcher and
    /// autostart entries, and shows it. An unknown size keeps the current one, an unknown kind
    /// is kept as not chosen.
    Q_INVOKABLE void configure(const QString& size, const QString& eventId, int kind);
    /// Remembers where the window is, for the next login.
    Q_INVOKABLE void keepGeometry(int x, int y, int width, int height);
    /// Forgets this widget: its settings and entries go.
    Q_INVOKABLE void removeWidget();
    /// Opens the app through a tidemark: link.
    Q_INVOKABLE void openApp();
    /// The kind's name for the configuration dialog.
    Q_INVOKABLE QString kindName(int kind) const;

    /// The settings of a kept widget, or nothing when there are none.
    static std::optional<Choice> keptChoice(const QString& widgetId);
    /// The kept window geometry (x, y, width, height), if any.
    static std::optional<QRect> keptGeometry(const QString& widgetId);

signals:
    void changed();

private:
    void watchFiles();
    void armMidnight();
    QString settingsPath() const;

    QString widgetId_;
    Choice choice_;
    std::function<bool()> darkScheme_;
    bool dark_ = false;
    Status status_ = Status::NoData;
    QVariantMap event_;
    QVariantList rows_;
    QVariantList eventOptions_;
    QFileSystemWatcher watcher_;
    QTimer coalesce_;
    /// A wall-clock timer at the next local midnight (a timerfd), so that it fires after a
    /// suspend too; a change of the system clock wakes it early to be set again.
    int midnightFd_ = -1;
    QSocketNotifier* midnightNotifier_ = nullptr;
};

} // namespace tidemark
