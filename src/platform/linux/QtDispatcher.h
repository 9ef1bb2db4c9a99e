// Delivers core observations (store commits, settings writes) on the thread of a QObject, so a
// model can update itself safely whichever thread committed the change.
#pragma once

#include "records/Observation.h"

class QObject;

namespace tidemark {

/// A dispatcher that queues each callback to `context`'s thread; callbacks queued for a context
/// that is destroyed before they run are dropped.
Dispatcher queuedOn(QObject* context);

} // namespace tidemark
