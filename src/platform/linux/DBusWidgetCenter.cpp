#include "platform/linux/DBusWidgetCenter.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace tidemark {

void DBusWidgetCenter::reloadAllTimelines() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.send(QDBusMessage::createSignal(kWidgetsObjectPath, kWidgetsInterface, kReloadSignal));
}

} // namespace tidemark
