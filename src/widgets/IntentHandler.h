// The configuration side of the widgets: the intents a widget is configured with, the handlers
// that answer them, and the list of events a user picks from. The events come only from the
// JSON that the app publishes into the shared suite; the store is never opened here.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tidemark {

/// One selectable event: its eventId and its title, nothing else.
struct EventBasicInfo {
    std::string identifier;
    std::string displayString;

    bool operator==(const EventBasicInfo&) const = default;
};

/// The kind of events a large widget lists. The raw values are stored with each widget, so they
/// never change. `unknown` is a widget that has no kind chosen yet: it lists every event, so a
/// new widget is not empty. The other kinds are those of the timeline's kind menu.
enum class EventBasicTypeEnum : std::int64_t {
    unknown = 0,
    allEvents = 1,   ///< every event
    oneOffDates = 2, ///< events without a repeat type (eventType 0)
    repeating = 3,   ///< events that repeat (eventRepeatOrNot)
    starred = 4,     ///< starred events (eventStarOrNot)
};

/// The case of a raw value; none outside 0 to 4.
std::optional<EventBasicTypeEnum> eventBasicTypeEnum(std::int64_t rawValue);

/// Whether a large widget of `kind` lists `event`.
bool widgetListsEvent(const EventFields& event, EventBasicTypeEnum kind);

/// The events a large widget of `kind` lists, nearest coming occurrence first (an occurrence of
/// today that has begun counts as nearest); events with no coming occurrence follow in published
/// order. Equal moments keep published order.
std::vector<eventObjectAtWidget> largeWidgetEvents(const std::vector<eventObjectAtWidget>& events,
                                                   EventBasicTypeEnum kind, Date now,
                                                   const Calendar& calendar);

// ---- Intents -------------------------------------------------------------------------------

/// Small and medium widgets: one chosen event (none until the user picks one).
struct IntentForSmallAndMediumWidgetIntent {
    std::optional<EventBasicInfo> eventSelected;
};

/// Lock-screen widgets: one chosen event.
struct IntentForLockScreenWidgetIntent {
    std::optional<EventBasicInfo> eventSelected;
};

/// The large widget: a kind of events. It has no provider; the cases are the enumeration's.
struct IntentForLargeWidgetIntent {
    EventBasicTypeEnum eventTypeSelection = EventBasicTypeEnum::unknown;
};

using WidgetIntent = std::variant<IntentForSmallAndMediumWidgetIntent,
                                  IntentForLockScreenWidgetIntent, IntentForLargeWidgetIntent>;

/// The items offered to a user, in the order given.
template <class T> struct ObjectCollection { std::vector<T> items; };

/// The error a provider may hand its completion; the providers here never give one.
struct IntentError {
    std::string message;
};

using EventOptionsCompletion =
    std::function<void(ObjectCollection<EventBasicInfo>, std::optional<IntentError>)>;

/// Every published event as an item, in published order, unfiltered and unsorted (ended events,
/// empty titles and equal titles included). Reads the shared suite once. A suite that can't be
/// opened, a missing key or a value that is not bytes stop the process with "Unexpectedly found
/// nil while unwrapping an Optional value"; bytes that are not an array of complete events stop
/// it with "Can't decode the widget data: " and the reason.
ObjectCollection<EventBasicInfo> eventSelectedOptions();

/// The items of decoded events, one per event in the order given: what eventSelectedOptions
/// offers once it has read the events. A widget window, which must not stop, uses it on the
/// events it has read itself.
ObjectCollection<EventBasicInfo> eventBasicInfos(const std::vector<eventObjectAtWidget>& events);

inline constexpr std::string_view kCantDecodeWidgetData = "Can't decode the widget data: ";

/// The published events for a widget window, which must not stop: nothing when the suite can't
/// be opened, the key is missing or its value is no array of complete events.
std::optional<std::vector<eventObjectAtWidget>> publishedWidgetEvents();

class SmallAndMediumWidgetHandler {
public:
    void provideEventSelectedOptionsCollection(const IntentForSmallAndMediumWidgetIntent& intent,
                                               const EventOptionsCompletion& completion) const;
};

class LockScreenWidgetHandler {
public:
    void provideEventSelectedOptionsCollection(const IntentForLockScreenWidgetIntent& intent,
                                               const EventOptionsCompletion& completion) const;
};

using WidgetIntentHandler = std::variant<SmallAndMediumWidgetHandler, LockScreenWidgetHandler>;

/// The entry of the configuration side: a new handler per request.
class IntentHandler {
public:
    /// A LockScreenWidgetHandler for a lock-screen intent, a SmallAndMediumWidgetHandler for
    /// every other one (the large widget's included, which asks it nothing).
    WidgetIntentHandler handler(const WidgetIntent& intent) const;
};

} // namespace tidemark
