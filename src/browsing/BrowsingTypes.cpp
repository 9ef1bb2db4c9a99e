#include "browsing/BrowsingTypes.h"

#include "browsing/EventRowModel.h"
#include "browsing/EventViewModel.h"
#include "browsing/FilteredEventListModel.h"
#include "browsing/ShareEventImage.h"
#include "browsing/StackCardLayout.h"
#include "browsing/TimelineActions.h"

#include <QtQml>

namespace tidemark {

void registerBrowsingTypes() {
    qmlRegisterType<FilteredEventListModel>("TideMark", 1, 0, "FilteredEventListModel");
    qmlRegisterType<EventRowModel>("TideMark", 1, 0, "EventRowModel");
    qmlRegisterType<TimelineActions>("TideMark", 1, 0, "TimelineActions");
    qmlRegisterType<ShareEventImage>("TideMark", 1, 0, "ShareEventImage");
    qmlRegisterType<StackCardLayout>("TideMark", 1, 0, "StackCardLayout");
    qmlRegisterType<EventViewModel>("TideMark", 1, 0, "EventViewModel");
}

} // namespace tidemark
