#include "browsing/TimelineActions.h"

#include "notifications/notiFunc.h"
#include "platform/linux/QtDispatcher.h"

namespace tidemark {

TimelineActions::TimelineActions(QObject* parent) : QObject(parent) {
    const auto changed = [this] { emit colorSchemeChanged(); };
    schemeObservations_[0] = colorSchemeSetToAlwaysLight_.observe(changed, queuedOn(this));
    schemeObservations_[1] = colorSchemeSetToAlwaysDark_.observe(changed, queuedOn(this));
    schemeObservations_[2] = colorSchemeSetToFollowSystem_.observe(changed, queuedOn(this));
}

int TimelineActions::colorScheme() const {
    if (colorSchemeSetToAlwaysLight_.get()) {
        return AlwaysLight;
    }
    if (colorSchemeSetToAlwaysDark_.get()) {
        return AlwaysDark;
    }
    return colorSchemeSetToFollowSystem_.get() ? FollowSystem : -1;
}

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
