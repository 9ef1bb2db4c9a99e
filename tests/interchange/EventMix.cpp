#include "EventMix.h"

#include "engine/LocalClock.h"
#include "records/DayListArchive.h"

#include <random>
#include <string>

namespace tidemark::testing {

EventMix makeEventMix(std::uint64_t seed, std::size_t count, Date now, const Calendar& calendar) {
    std::mt19937_64 random(seed);
    const auto pick = [&random](std::int64_t low, std::int64_t high) {
        return low +
               static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(high - low + 1));
    };
    const auto chance = [&pick](int percent) { return pick(1, 100) <= percent; };
    const DateComponents today = calendar.dateComponents(kYear | kMonth | kDay, now);
    const std::int64_t todayDay = daysFromCivil(*today.year, *today.month, *today.day);
    static const std::vector<std::int64_t> monthCodes{1, 2, 5, 10, 15, 28, 29, 30, 31, 99, 99};

    EventMix mix;
    for (std::size_t i = 0; i < count; ++i) {
        eventInfo e;
        e.eventId = "MIX-" + std::to_string(seed) + "-" + std::to_string(i);
        e.eventNotiId = e.eventId;
        e.eventTitle = "Event " + std::to_string(i);
        e.eventContent =
            chance(50) ? "Notes, with a comma; and a semicolon\nand a second line" : "";
        e.eventType = pick(0, 4);
        e.eventRepeatOrNot = e.eventType != 0;
        const CivilDate start = civilFromDays(todayDay + pick(-6 * 365, 2 * 365));
        e.eventStartDateYear = start.year;
        e.eventStartDateMonth = start.month;
        // Now and then a day the month lacks, which composes into the next month.
        e.eventStartDateDay = chance(10) ? pick(29, 31) : start.day;
        e.eventDateWhenEveryDayHour = pick(0, 23);
        e.eventDateWhenEveryDayMin = pick(0, 11) * 5;
        if (e.eventType == 2) {
            std::vector<std::int64_t> codes;
            for (std::int64_t n = pick(1, 3); n > 0; --n) {
                codes.push_back(pick(1, 7));
            }
            e.eventDateWhenEveryWeek = encodeDayListArchive(codes);
        }
        if (e.eventType == 3) {
            std::vector<std::int64_t> codes;
            for (std::int64_t n = pick(1, 3); n > 0; --n) {
                codes.push_back(monthCodes[static_cast<std::size_t>(
                    pick(0, static_cast<std::int64_t>(monthCodes.size()) - 1))]);
            }
            e.eventDateWhenEveryMonth = encodeDayListArchive(codes);
        }
        if (chance(35)) {
            e.eventHaveCustomizeInterval = true;
            e.eventDateWhenCustomizeRepeatTimes = pick(0, 4);
        }
        if (chance(30)) {
            const CivilDate end = civilFromDays(todayDay + pick(-2 * 365, 6 * 365));
            e.eventHaveEndDateOrNot = true;
            e.eventEndDateYear = end.year;
            e.eventEndDateMonth = end.month;
            e.eventEndDateDay = end.day;
        }
        if (chance(40)) {
            e.eventNotiOrNot = true;
            e.eventNotiType = e.eventType == 1 ? pick(0, 3) : pick(4, 9);
            e.eventNotiDateDayHour = pick(0, 23);
            e.eventNotiDateDayMin = pick(0, 59);
        }
        if (chance(60)) {
            e.eventColorString = "colorForUserSelection0" + std::to_string(pick(1, 5));
        }
        if (chance(15)) {
            e.eventHaveMemoOrNot = true;
            mix.memos.push_back(
                {"MEMO-" + e.eventId, e.eventId, "", "Memo title", "Memo text", 0, "", ""});
        }
        mix.events.push_back(std::move(e));
    }
    return mix;
}

} // namespace tidemark::testing
