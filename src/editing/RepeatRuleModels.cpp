#include "editing/RepeatRuleModels.h"

#include "calendar/Calendar.h"
#include "platform/linux/QtDispatcher.h"
#include "records/DayListArchive.h"

namespace tidemark {

namespace {

QVariantList variantList(const DayList& list) {
    QVariantList out;
    out.reserve(static_cast<qsizetype>(list.size()));
    for (auto code : list) {
        out.push_back(static_cast<int>(code));
    }
    return out;
}

/// Year, month and day of a moment in the current calendar, 0 for a missing component.
void dayOf(Date date, std::int64_t& year, std::int64_t& month, std::int64_t& day) {
    const auto c = Calendar::current().dateComponents(kYear | kMonth | kDay, date);
    year = c.year.value_or(0);
    month = c.month.value_or(0);
    day = c.day.value_or(0);
}

struct YearMonthDay {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
};

/// The yearly date as the picker shows it: the draft's, or today while it is unset (year 0).
YearMonthDay shownStartDate(const RepeatRuleDraft& draft) {
    YearMonthDay shown{draft.startYear, draft.startMonth, draft.startDay};
    if (shown.year == 0) {
        dayOf(now(), shown.year, shown.month, shown.day);
    }
    return shown;
}

} // namespace

// --- RepeatRuleModel -------------------------------------------------------------------------

RepeatRuleModel::RepeatRuleModel(QObject* parent) : QObject(parent) {}

void RepeatRuleModel::replaceDraft(const RepeatRuleDraft& draft) {
    if (draft == draft_) {
        return;
    }
    draft_ = draft;
    emit changed();
}

void RepeatRuleModel::edit(Part part, const std::function<void(RepeatRuleDraft&)>& change) {
    RepeatRuleDraft next = draft_;
    change(next);
    if (next == draft_) {
        return;
    }
    draft_ = std::move(next);
    edited(part);
    emit changed();
}

void RepeatRuleModel::setEventType(int type) {
    edit(Part::Type, [&](RepeatRuleDraft& d) { d.type = type; });
}

QVariantList RepeatRuleModel::weekList() const {
    return variantList(draft_.week);
}

QVariantList RepeatRuleModel::monthList() const {
    return variantList(draft_.month);
}

bool RepeatRuleModel::shortcutLit() const {
    return weekdayShortcutLit(draft_.week);
}

bool RepeatRuleModel::complete() const {
    return repeatRuleComplete(draft_.type, draft_.week, draft_.month);
}

int RepeatRuleModel::startYear() const {
    return static_cast<int>(shownStartDate(draft_).year);
}

int RepeatRuleModel::startMonth() const {
    return static_cast<int>(shownStartDate(draft_).month);
}

int RepeatRuleModel::startDay() const {
    return static_cast<int>(shownStartDate(draft_).day);
}

void RepeatRuleModel::setIntervalOn(bool on) {
    edit(Part::IntervalOn, [&](RepeatRuleDraft& d) { d.intervalOn = on; });
}

void RepeatRuleModel::setIntervalValue(int value) {
    edit(Part::IntervalValue, [&](RepeatRuleDraft& d) { d.intervalValue = value; });
}

int RepeatRuleModel::rowCount() const {
    return intervalRowCount(draft_.type);
}

QString RepeatRuleModel::intervalUnitText() const {
    const char* key = intervalUnitKey(draft_.type);
    return *key ? qtTrId(key) : QString();
}

void RepeatRuleModel::tapWeekday(int code) {
    edit(Part::Week, [&](RepeatRuleDraft& d) { toggleDayCode(d.week, code); });
}

void RepeatRuleModel::tapWeekdayShortcut() {
    edit(Part::Week, [](RepeatRuleDraft& d) { tidemark::tapWeekdayShortcut(d.week); });
}

void RepeatRuleModel::tapMonthDay(int code) {
    edit(Part::Month, [&](RepeatRuleDraft& d) { tidemark::tapMonthDay(d.month, code); });
}

void RepeatRuleModel::clearMonthDays() {
    edit(Part::Month, [](RepeatRuleDraft& d) { d.month.clear(); });
}

void RepeatRuleModel::setTime(int hour, int minute) {
    edit(Part::Time, [&](RepeatRuleDraft& d) {
        d.hour = hour;
        d.minute = minute;
    });
}

void RepeatRuleModel::setStartDate(int year, int month, int day) {
    edit(Part::StartDate, [&](RepeatRuleDraft& d) {
        d.startYear = year;
        d.startMonth = month;
        d.startDay = day;
    });
}

// --- AddRepeatRuleModel -----------------------------------------------------------------

AddRepeatRuleModel::AddRepeatRuleModel(QObject* parent) : RepeatRuleModel(parent) {
    // Another declaration of these keys (the form) may write them while the page is open.
    auto follow = [this](const auto& setting) {
        observations_.push_back(setting.observe([this] { reload(); }, queuedOn(this)));
    };
    follow(newEventType);
    follow(newEventTypeHaveIntervalInfo);
    follow(intNumInputFromUserForCustomizeRepeatEvent);
    follow(dateInputFromUserForCustomizeRepeatEventByDayHour);
    follow(dateInputFromUserForCustomizeRepeatEventByDayMin);
    follow(dateInputFromUserForCustomizeRepeatEventStartDateIntYear);
    follow(dateInputFromUserForCustomizeRepeatEventStartDateIntMonth);
    follow(dateInputFromUserForCustomizeRepeatEventStartDateIntDay);
    follow(weekArrayForAppStorageList);
    follow(monthArrayForAppStorageList);
    reload();
}

void AddRepeatRuleModel::reload() {
    RepeatRuleDraft d;
    d.type = newEventType;
    d.hour = dateInputFromUserForCustomizeRepeatEventByDayHour;
    d.minute = dateInputFromUserForCustomizeRepeatEventByDayMin;
    d.week = decodeDayListArchive(weekArrayForAppStorageList.get());
    d.month = decodeDayListArchive(monthArrayForAppStorageList.get());
    d.startYear = dateInputFromUserForCustomizeRepeatEventStartDateIntYear;
    d.startMonth = dateInputFromUserForCustomizeRepeatEventStartDateIntMonth;
    d.startDay = dateInputFromUserForCustomizeRepeatEventStartDateIntDay;
    d.intervalOn = newEventTypeHaveIntervalInfo;
    d.intervalValue = intNumInputFromUserForCustomizeRepeatEvent;
    replaceDraft(d);
}

void AddRepeatRuleModel::appear() {
    reload();
    if (draft_.hour == 0 && draft_.minute == 0) {
        const auto c = Calendar::current().dateComponents(kHour | kMinute, now());
        setTime(static_cast<int>(c.hour.value_or(0)), static_cast<int>(c.minute.value_or(0)));
    }
}

void AddRepeatRuleModel::edited(Part part) {
    switch (part) {
    case Part::Type:
        newEventType = draft_.type;
        break;
    case Part::Time:
        dateInputFromUserForCustomizeRepeatEventByDayHour = draft_.hour;
        dateInputFromUserForCustomizeRepeatEventByDayMin = draft_.minute;
        break;
    case Part::Week:
        weekArrayForAppStorageList = encodeDayListArchive(draft_.week);
        break;
    case Part::Month:
        monthArrayForAppStorageList = encodeDayListArchive(draft_.month);
        break;
    case Part::StartDate:
        dateInputFromUserForCustomizeRepeatEventStartDateIntYear = draft_.startYear;
        dateInputFromUserForCustomizeRepeatEventStartDateIntMonth = draft_.startMonth;
        dateInputFromUserForCustomizeRepeatEventStartDateIntDay = draft_.startDay;
        break;
    case Part::IntervalOn:
        newEventTypeHaveIntervalInfo = draft_.intervalOn;
        break;
    case Part::IntervalValue:
        intNumInputFromUserForCustomizeRepeatEvent = draft_.intervalValue;
        break;
    case Part::EndDate:
        break; // the form owns the end date
    }
}

// --- EditRepeatRuleModel -------------------------------------------------------------

EditRepeatRuleModel::EditRepeatRuleModel(QObject* parent) : RepeatRuleModel(parent) {
    // The change check compares with the live record; the draft stays as the user left it.
    observation_ = Results<eventInfo>().observe(
        [this] {
            record_ = eventId_.isEmpty() ? std::nullopt
                                         : Store::open().object<eventInfo>(eventId_.toStdString());
            emit changed();
        },
        queuedOn(this));
}

void EditRepeatRuleModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    emit eventIdChanged();
    restore();
}

void EditRepeatRuleModel::restore() {
    record_ =
        eventId_.isEmpty() ? std::nullopt : Store::open().object<eventInfo>(eventId_.toStdString());
    RepeatRuleDraft d = record_ ? repeatDraftOf(*record_) : RepeatRuleDraft{};
    if (d.endYear == 0) {
        // No end date was ever picked: the picker offers ten days ahead.
        dayOf(now().addingTimeInterval(864000), d.endYear, d.endMonth, d.endDay);
    }
    draft_ = d;
    emit changed();
}

bool EditRepeatRuleModel::canSave() const {
    return record_ && repeatDraftSavable(draft_, *record_);
}

void EditRepeatRuleModel::setEndDateOn(bool on) {
    edit(Part::EndDate, [&](RepeatRuleDraft& d) { d.endDateOn = on; });
}

void EditRepeatRuleModel::setEndDate(int year, int month, int day) {
    edit(Part::EndDate, [&](RepeatRuleDraft& d) {
        d.endYear = year;
        d.endMonth = month;
        d.endDay = day;
    });
}

bool EditRepeatRuleModel::save() {
    if (!canSave()) {
        return false;
    }
    applyFieldWrites(record_->eventId, repeatDraftWrites(draft_, *record_), *record_);
    return true;
}

} // namespace tidemark
