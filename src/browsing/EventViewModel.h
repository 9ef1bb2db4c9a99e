// The day view with one chosen event (eventView): today as "yyyy-MM-dd" and its hour, and the
// days of the day window, rebuilt in the store when the window's range changes.
#pragma once

#include "records/Store.h"
#include "records/eventInfo.h"

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace tidemark {

class EventViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString todayString READ todayString NOTIFY changed)
    Q_PROPERTY(QString todayStringHour READ todayStringHour NOTIFY changed)
    /// The days of the window, "yyyy-MM-dd", in date order.
    Q_PROPERTY(QStringList dateData READ dateData NOTIFY changed)
    /// Every event ({eventId, title}), newest first, for the event picker.
    Q_PROPERTY(QVariantList events READ events NOTIFY changed)
public:
    explicit EventViewModel(QObject* parent = nullptr);

    QString todayString() const;
    QString todayStringHour() const;
    QStringList dateData() const { return dateData_; }
    QVariantList events() const;

    /// Rebuilds the window's day rows for a range (0 seven days, 1 thirty, 2 a year).
    Q_INVOKABLE void rebuildDateData(int range);

signals:
    void changed();

private:
    void reload();

    Results<appFuncForDateData> rows_;
    Results<eventInfo> data_;
    std::vector<ObservationToken> observations_;
    QStringList dateData_;
};

} // namespace tidemark
