#include "shell/FirstLaunch.h"

#include "base/Fatal.h"
#include "base/Localize.h"
#include "notifications/notiFunc.h"
#include "records/Defaults.h"
#include "records/realmDataFunc.h"
#include "widgets/widgetFunc.h"

namespace tidemark {

std::array<eventObject, 2> makeSampleEvents(const DateComponents& today) {
    const std::int64_t year = unwrap(today.year);
    const std::int64_t month = unwrap(today.month);
    const std::int64_t day = unwrap(today.day);

    eventObject first;
    first.eventId = newUUIDString();
    first.eventTitle = localized("eventInfoAtOnboardPageTitleString");
    first.eventContent = localized("eventInfoAtOnboardPageContentString");
    first.eventStartDateYear = checkedAdd(year, 1);
    first.eventStartDateMonth = 1;
    first.eventStartDateDay = 1;
    first.eventStarOrNot = true;
    first.eventHaveMemoOrNot = true;
    first.eventColorString = "colorForUserSelection03";

    eventObject second;
    second.eventId = newUUIDString();
    second.eventTitle = localized("onboardPageString01");
    second.eventContent = localized("onboardPageString02");
    second.eventStartDateYear = year;
    second.eventStartDateMonth = month;
    second.eventStartDateDay = checkedAdd(day, 1);
    second.eventStarOrNot = true;
    second.eventHaveMemoOrNot = true;
    second.eventColorString = "colorForUserSelection04";

    return {first, second};
}

bool runFirstLaunchWorkIfNeeded() {
    Setting<bool> userLaunchStatus{"userLaunchStatus", false};
    if (userLaunchStatus.get()) {
        return false;
    }
    notiFunc().requestNotiAuthorization();
    notiFunc().removeAllNotiRequests();
    const auto today = Calendar::current().dateComponents(kYear | kMonth | kDay, now());
    for (const auto& sample : makeSampleEvents(today)) {
        realmDataFunc().addEventData(sample);
    }
    widgetFunc().publishEventDataToWidget();
    userLaunchStatus.set(true);
    return true;
}

} // namespace tidemark
