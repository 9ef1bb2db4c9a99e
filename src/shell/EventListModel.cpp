#include "shell/EventListModel.h"

#include "calendar/Calendar.h"
#include "platform/linux/QtDispatcher.h"

namespace tidemark {

namespace {
QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

/// The start date in the user's date style; the numbers as they stand where they name no date.
QString startDateText(const eventInfo& e) {
    DateComponents c;
    c.year = e.eventStartDateYear;
    c.month = e.eventStartDateMonth;
    c.day = e.eventStartDateDay;
    const auto& calendar = Calendar::current();
    if (auto date = calendar.date(c)) {
        return qs(calendar.formatAbbreviated(*date));
    }
    return QStringLiteral("%1-%2-%3")
        .arg(e.eventStartDateYear)
        .arg(e.eventStartDateMonth)
        .arg(e.eventStartDateDay);
}
} // namespace

EventListModel::EventListModel(QObject* parent) : QAbstractListModel(parent) {
    observation_ = results_.observe([this] { reload(); }, queuedOn(this));
    reload();
}

void EventListModel::reload() {
    const int before = count();
    beginResetModel();
    events_ = results_.snapshot();
    endResetModel();
    if (count() != before) {
        emit countChanged();
    }
}

int EventListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant EventListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) {
        return {};
    }
    const auto& e = events_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case EventIdRole:
        return qs(e.eventId);
    case TitleRole:
        return qs(e.eventTitle);
    case ContentRole:
        return qs(e.eventContent);
    case ColorNameRole:
        return qs(e.eventColorString);
    case StarredRole:
        return e.eventStarOrNot;
    case StartDateTextRole:
        return startDateText(e);
    default:
        return {};
    }
}

QHash<int, QByteArray> EventListModel::roleNames() const {
    return {{EventIdRole, "eventId"},        {TitleRole, "eventTitle"},
            {ContentRole, "eventContent"},   {ColorNameRole, "eventColorString"},
            {StarredRole, "eventStarOrNot"}, {StartDateTextRole, "startDateText"}};
}

} // namespace tidemark
