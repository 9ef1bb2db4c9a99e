#include "browsing/TimelineActions.h"

#include "notifications/notiFunc.h"

namespace tidemark {

void TimelineActions::timelineAppeared() {
    // The plan catches up with every edit made since it was last filed.
    notiFunc().replanAllNotiRequests();
}

void TimelineActions::chooseColorScheme(int scheme) {
    if (scheme < AlwaysLight || scheme > FollowSystem) {
        return;
    }
    colorSchemeSetToAlwaysLight_.set(scheme == AlwaysLight);
    colorSchemeSetToAlwaysDark_.set(scheme == AlwaysDark);
    colorSchemeSetToFollowSystem_.set(scheme == FollowSystem);
    userTheme_.set(scheme == AlwaysLight  ? Theme::light
                   : scheme == AlwaysDark ? Theme::dark
                                          : Theme::systemDefault);
}

} // namespace tidemark
