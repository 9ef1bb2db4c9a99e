// Delivers core observations (store commits, settings writes) on the thread of a QObject, so a
// model can update itself safely whichever thread committed the change.
#pragma once

#include "cloud/CloudService.h"
#include "records/Observation.h"

#include <QPointer>

class QObject;

namespace tidemark {

/// A dispatcher that queues each callback to `context`'s thread; callbacks queued for a context
/// that is destroyed before they run are dropped.
Dispatcher queuedOn(QObject* context);

/// The app's main queue for the cloud logic: work runs on `context`'s thread (the window's),
/// after the delay when one is given; work for a context that is gone is dropped.
class QtMainQueue final : public MainQueue {
public:
    explicit QtMainQueue(QObject* context) : context_(context) {}
    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::function<void()> work) override;

private:
    QPointer<QObject> context_;
};

} // namespace tidemark
