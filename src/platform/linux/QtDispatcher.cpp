#include "platform/linux/QtDispatcher.h"

#include <QMetaObject>
#include <QObject>

namespace tidemark {

Dispatcher queuedOn(QObject* context) {
    return [context](std::function<void()> callback) {
        QMetaObject::invokeMethod(context, std::move(callback), Qt::QueuedConnection);
    };
}

} // namespace tidemark
