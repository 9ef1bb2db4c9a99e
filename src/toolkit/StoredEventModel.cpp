#include "toolkit/StoredEventModel.h"

#include "platform/linux/QtDispatcher.h"

namespace tidemark {

StoredEventModel::StoredEventModel(QObject* parent) : QObject(parent) {
    observation_ = eventInfoData_.observe([this] { reload(); }, queuedOn(this));
}

void StoredEventModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    eventIdSet();
    emit eventIdChanged();
    reload();
}

void StoredEventModel::reload() {
    event_ =
        eventId_.isEmpty() ? std::nullopt : Store::open().object<eventInfo>(eventId_.toStdString());
    eventLoaded();
    emit changed();
}

} // namespace tidemark
