// A list model over the store's live result set of events: it reads the records in store order
// and resets itself after every committed write to the events table, from whatever thread.
#pragma once

#include "records/Store.h"
#include "records/eventInfo.h"

#include <QAbstractListModel>
#include <vector>

namespace tidemark {

class EventListModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role {
        EventIdRole = Qt::UserRole + 1,
        TitleRole,
        ContentRole,
        ColorNameRole,
        StarredRole,
        StartDateTextRole,
    };

    explicit EventListModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int count() const { return static_cast<int>(events_.size()); }

    /// Reads the store again (also called by the observation after each commit).
    Q_INVOKABLE void reload();

signals:
    void countChanged();

private:
    Results<eventInfo> results_;
    ObservationToken observation_;
    std::vector<eventInfo> events_;
};

} // namespace tidemark
