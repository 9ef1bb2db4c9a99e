#include "platform/linux/QtDispatcher.h"

#include <QMetaObject>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <cmath>

namespace tidemark {

Dispatcher queuedOn(QObject* context) {
    return [context](std::function<void()> callback) {
        QMetaObject::invokeMethod(context, std::move(callback), Qt::QueuedConnection);
    };
}

void QtMainQueue::async(std::function<void()> work) {
    if (context_) {
        QMetaObject::invokeMethod(context_, std::move(work), Qt::QueuedConnection);
    }
}

void QtMainQueue::asyncAfter(double seconds, std::function<void()> work) {
    QObject* context = context_;
    if (!context) {
        return;
    }
    const int ms = static_cast<int>(std::lround(std::max(0.0, seconds) * 1000));
    auto start = [context, ms, work = std::move(work)]() mutable {
        QTimer::singleShot(ms, context, std::move(work));
    };
    // A timer belongs to the thread that starts it: start it on the context's thread.
    if (QThread::currentThread() == context->thread()) {
        start();
    } else {
        QMetaObject::invokeMethod(context, std::move(start), Qt::QueuedConnection);
    }
}

} // namespace tidemark
