// The one shared observable of the process: the eventIds of the day that the calendar page shows,
// in the order the date engine walks the store.
#pragma once

#include <QObject>
#include <QStringList>

namespace tidemark {

class DataStore : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList todayDataForUI READ todayDataForUI WRITE setTodayDataForUI NOTIFY
                   todayDataForUIChanged)
public:
    using QObject::QObject;

    QStringList todayDataForUI() const { return todayDataForUI_; }
    void setTodayDataForUI(const QStringList& ids) {
        if (ids != todayDataForUI_) {
            todayDataForUI_ = ids;
            emit todayDataForUIChanged();
        }
    }

signals:
    void todayDataForUIChanged();

private:
    QStringList todayDataForUI_;
};

} // namespace tidemark
