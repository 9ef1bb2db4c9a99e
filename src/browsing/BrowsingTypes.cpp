#include "browsing/BrowsingTypes.h"

#include "browsing/EventRowModel.h"
#include "browsing/EventSchedule.h"
#include "browsing/EventViewModel.h"
#include "browsing/FilteredEventListModel.h"
#include "browsing/ShareEventImage.h"
#include "browsing/StackCardLayout.h"
#include "browsing/Summary.h"
#include "browsing/TimelineActions.h"

#include <QtQml>

namespace tidemark {

void registerBrowsingTypes() {
    qmlRegisterType<FilteredEventListModel>("TideMark", 1, 0, "FilteredEventListModel");
    qmlRegisterType<EventRowModel>("TideMark", 1, 0, "EventRowModel");
    qmlRegisterType<TimelineActions>("TideMark", 1, 0, "TimelineActions");
    qmlRegisterType<SummaryViewModel>("TideMark", 1, 0, "SummaryViewModel");
    qmlRegisterType<SummaryRuleBoxModel>("TideMark", 1, 0, "SummaryRuleBoxModel");
    qmlRegisterType<EventScheduleModel>("TideMark", 1, 0, "EventScheduleModel");
    qmlRegisterType<NextFewDaysModel>("TideMark", 1, 0, "NextFewDaysModel");
    qmlRegisterType<ShareEventImage>("TideMark", 1, 0, "ShareEventImage");
    qmlRegisterType<StackCardLayout>("TideMark", 1, 0, "StackCardLayout");
    qmlRegisterType<EventViewModel>("TideMark", 1, 0, "EventViewModel");
}

} // namespace tidemark
