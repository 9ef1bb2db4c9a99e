#include "browsing/BrowsingTypes.h"

#include "browsing/EventRowModel.h"
#include "browsing/FilteredEventListModel.h"
#include "browsing/TimelineActions.h"

#include <QtQml>

namespace tidemark {

void registerBrowsingTypes() {
    qmlRegisterType<FilteredEventListModel>("TideMark", 1, 0, "FilteredEventListModel");
    qmlRegisterType<EventRowModel>("TideMark", 1, 0, "EventRowModel");
    qmlRegisterType<TimelineActions>("TideMark", 1, 0, "TimelineActions");
}

} // namespace tidemark
