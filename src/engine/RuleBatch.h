// The engine's rules for many questions at once. A batch compiles each event once (its lists
// decoded, its start and end as day numbers and moments) and then answers the day queries of a
// month view and the occurrence lists of a notification plan with a few integer operations per
// event and day, instead of walking every rule from its start through the calendar.
//
// The answers are those of the walks in Occurrences.h, element by element and in the same order,
// fatal stops included. Whatever a batch can't answer by arithmetic with certainty (another
// calendar system, a zone whose clock changes it can't confirm, dates before 1600 or very far
// out, codes or times out of their usual ranges) it hands to those walks.
//
// A batch refers to the events and the calendar it was made with (both must outlive it). What
// it learns about them stays with it, except what depends on nothing but its own input and so
// can't go stale: the zone's years (LocalClock) and the decoded day lists, by their bytes, are
// kept for the process, so that the next batch (the month after a save, the next plan) starts
// with them.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// One entry of a plan's occurrence work: the event (its position in the batch) and the moment
/// that one element of its occurrence list composes to.
struct PlannedOccurrence {
    std::size_t eventIndex = 0;
    Date date;

    bool operator==(const PlannedOccurrence&) const = default;
};

class RuleBatch {
public:
    /// A batch over the events in this order. The events and the calendar are referred to, not
    /// copied.
    RuleBatch(std::vector<const EventFields*> events, const Calendar& calendar);

    template <class Event>
    RuleBatch(const std::vector<Event>& events, const Calendar& calendar)
        : RuleBatch(pointersTo(events), calendar) {}

    ~RuleBatch();
    RuleBatch(const RuleBatch&) = delete;
    RuleBatch& operator=(const RuleBatch&) = delete;

    std::size_t size() const { return events_.size(); }
    const EventFields& event(std::size_t index) const { return *events_[index]; }

    /// eventHappensOnDay for one event of the batch.
    bool happensOnDay(std::size_t index, Date date) const;

    /// The positions of the events that fall on the calendar day of `date`, ascending (the
    /// events of eventsOnDate, in the batch's order).
    std::vector<std::size_t> indicesOnDate(Date date) const;
    /// The same among the given positions only (ascending), for callers that know which events
    /// can fall on the day at all.
    std::vector<std::size_t> indicesOnDate(Date date, const std::vector<std::size_t>& among) const;
    /// indicesOnDate for each of `dates`, in their order. For a run of consecutive days (the cells
    /// of a month) each event's passes through those days are walked once and only the days they
    /// come near are asked about, instead of every day asking about every event.
    std::vector<std::vector<std::size_t>> indicesOnDates(const std::vector<Date>& dates) const;
    /// Their ids (eventIdsOnDate for a given date).
    std::vector<std::string> eventIdsOnDate(Date date) const;

    /// occurrenceList for one event of the batch.
    std::vector<DateComponents> occurrences(std::size_t index, Date now) const;

    /// The occurrence work of a notification plan: for every event with a reminder
    /// (eventNotiOrNot), in the batch's order, every element of its occurrence list composed to
    /// its moment; the whole sorted by moment, equal moments kept in the order of the events and
    /// of their lists.
    std::vector<PlannedOccurrence> planOccurrences(Date now) const;

private:
    template <class Event>
    static std::vector<const EventFields*> pointersTo(const std::vector<Event>& events) {
        std::vector<const EventFields*> pointers;
        pointers.reserve(events.size());
        for (const Event& event : events) {
            pointers.push_back(&static_cast<const EventFields&>(event));
        }
        return pointers;
    }

    struct State;
    std::vector<const EventFields*> events_;
    const Calendar& calendar_;
    std::unique_ptr<State> state_;
};

/// A batch over a shared set of events kept from one question to the next for as long as its
/// answers can't change: the same set (the store hands out the same one until the events table
/// takes a commit), the same calendar object and environment (zone, locale, week rules) and the
/// same day of now. Anything else compiles the rules anew.
class KeptRuleBatch {
public:
    KeptRuleBatch();
    ~KeptRuleBatch();
    KeptRuleBatch(const KeptRuleBatch&) = delete;
    KeptRuleBatch& operator=(const KeptRuleBatch&) = delete;

    /// The batch over `events` in `calendar`, the kept one when nothing it depends on changed.
    /// It stays valid until the next call.
    const RuleBatch& over(std::shared_ptr<const std::vector<eventInfo>> events,
                          const Calendar& calendar);
    /// How many times the rules were compiled; lets a test see what was kept.
    std::uint64_t compiles() const { return compiles_; }

private:
    struct Stamp {
        const Calendar* calendar = nullptr;
        std::uint64_t environment = 0;
        std::string zone, locale;
        int firstWeekday = 0, minimalDays = 0;
        std::int64_t today[3] = {};
        bool operator==(const Stamp&) const = default;
    };
    std::shared_ptr<const std::vector<eventInfo>> events_;
    Stamp stamp_;
    std::unique_ptr<RuleBatch> batch_;
    std::uint64_t compiles_ = 0;
};

/// The plan's occurrence work as the walks of Occurrences.h give it: the occurrence list of
/// every event with a reminder, each element composed through the calendar, sorted by moment
/// (equal moments in the order of the events and lists).
std::vector<PlannedOccurrence> planOccurrencesByWalk(const std::vector<const EventFields*>& events,
                                                     Date now, const Calendar& calendar);

} // namespace tidemark
