#include "browsing/FilteredEventListModel.h"

#include "platform/linux/QtDispatcher.h"

#include <unordered_map>

namespace tidemark {

FilteredEventListModel::FilteredEventListModel(QObject* parent) : QAbstractListModel(parent) {
    auto again = [this] { reload(); };
    observations_.push_back(eventInfoData_.observe(again, queuedOn(this)));
    observations_.push_back(showWhichKindEventSelection_.observe(again, queuedOn(this)));
    observations_.push_back(filterSelectionFromUserForColorString_.observe(again, queuedOn(this)));
    observations_.push_back(timelineViewShowEndEventOrNot_.observe(again, queuedOn(this)));
    reload();
}

void FilteredEventListModel::reload() {
    filter_.showWhichKindEventSelection = showWhichKindEventSelection_.get();
    filter_.filterSelectionFromUserForColorString = filterSelectionFromUserForColorString_.get();
    filter_.timelineViewShowEndEventOrNot = timelineViewShowEndEventOrNot_.get();
    const auto events = eventInfoData_.snapshot();
    const auto result = timelineRows(events, filter_, now(), Calendar::current());

    // Each row follows its own event; only a change of which events are listed, or of their
    // order, resets the model (a reset would also throw away the list's scroll position).
    std::vector<std::string> before;
    for (const auto& row : rows_) {
        before.push_back(row.eventId);
    }
    std::vector<std::string> wanted;
    if (allItems_) {
        for (const auto& item : result.items) {
            wanted.push_back(item.eventId);
        }
    }
    const auto& rowIds = allItems_ ? wanted : result.rowEventIds;
    const bool sameRows = before == rowIds;
    if (!sameRows) {
        std::unordered_map<std::string, const stackCardItem*> itemOf;
        for (const auto& item : result.items) {
            itemOf.emplace(item.eventId, &item);
        }
        beginResetModel();
        rows_.clear();
        for (const auto& id : rowIds) {
            rows_.push_back(*itemOf.at(id));
        }
    }
    showEmptyBox_ = result.showEmptyBox;
    if (!sameRows) {
        endResetModel();
    }
    emit rowsChanged();
}

void FilteredEventListModel::setAllItems(bool allItems) {
    if (allItems_ != allItems) {
        allItems_ = allItems;
        reload();
        emit allItemsChanged();
    }
}

QString FilteredEventListModel::kindMenuTitle() const {
    const auto key = kindMenuTitleKey(filter_.showWhichKindEventSelection);
    return key.empty() ? QString() : qtTrId(key.c_str());
}

QStringList FilteredEventListModel::eventIds() const {
    QStringList ids;
    for (const auto& row : rows_) {
        ids << QString::fromStdString(row.eventId);
    }
    return ids;
}

int FilteredEventListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant FilteredEventListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) {
        return {};
    }
    const auto& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case EventIdRole:
        return QString::fromStdString(row.eventId);
    case ItemIdRole:
        return QString::fromStdString(row.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> FilteredEventListModel::roleNames() const {
    return {{EventIdRole, "eventId"}, {ItemIdRole, "itemId"}};
}

} // namespace tidemark
