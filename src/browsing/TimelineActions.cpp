#include "browsing/TimelineActions.h"

#include "notifications/notiFunc.h"

namespace tidemark {

void TimelineActions::timelineAppeared() {
    notiFunc().removeAllNotiRequests();
    // planAllNotiRequests() follows here when reminder planning lands.
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
