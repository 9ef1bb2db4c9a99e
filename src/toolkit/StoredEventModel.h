// The shape every view model of one stored event shares: the page sets `eventId`, the model
// looks the event up, and looks it up again after every commit of the events table (also one by
// another process), so a page never shows an event as it was. A deleted event reads as gone
// (exists == false) and each subclass then shows nothing for it.
#pragma once

#include "records/Store.h"
#include "records/eventInfo.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace tidemark {

class StoredEventModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY changed)
public:
    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool exists() const { return event_.has_value(); }

    /// Looks the event up again.
    Q_INVOKABLE void reload();

signals:
    void eventIdChanged();
    /// After every look-up: `exists` and everything a subclass derives may have changed.
    void changed();

protected:
    explicit StoredEventModel(QObject* parent);

    /// The event as last looked up; empty while no id is set or once it is deleted.
    const std::optional<eventInfo>& event() const { return event_; }
    /// Called after each look-up, before `changed`: derive what the page shows.
    virtual void eventLoaded() {}
    /// Called when the page sets another id, before the look-up.
    virtual void eventIdSet() {}

private:
    QString eventId_;
    std::optional<eventInfo> event_;
    Results<eventInfo> eventInfoData_;
    ObservationToken observation_;
};

} // namespace tidemark
