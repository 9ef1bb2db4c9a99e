#include "editing/CardViewModel.h"

#include "base/Fatal.h"
#include "engine/Occurrences.h"
#include "platform/linux/QtDispatcher.h"
#include "records/EventCodes.h"
#include "records/SettingsKeys.h"
#include "records/realmDataFunc.h"

#include <algorithm>

namespace tidemark {

std::optional<eventInfo> storedEvent(const QString& eventId) {
    if (eventId.isEmpty()) {
        return std::nullopt;
    }
    return Store::open().object<eventInfo>(eventId.toStdString());
}

bool writeEventField(const QString& eventId, const std::string& key, const FieldValue& value) {
    const auto record = storedEvent(eventId);
    if (!record) {
        return false;
    }
    realmDataFunc data;
    std::visit(
        [&](const auto& v) {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::string>) {
                data.editEventData(*record, key, v);
            } else if constexpr (std::is_same_v<T, std::int64_t>) {
                data.editEventData(*record, key, std::nullopt, v);
            } else if constexpr (std::is_same_v<T, bool>) {
                data.editEventData(*record, key, std::nullopt, std::nullopt, v);
            } else {
                data.editEventData(*record, key, std::nullopt, std::nullopt, std::nullopt, v);
            }
        },
        value);
    return true;
}

QStringList nextDateStrings(const eventInfo& event, Date now, const Calendar& calendar, int limit) {
    if (!event.eventRepeatOrNot) {
        return {};
    }
    std::vector<Date> dates;
    for (const auto& element : occurrenceList(event, now, calendar)) {
        if (auto date = calendar.date(element); date && isOpenAt(*date, now)) {
            dates.push_back(*date);
        }
    }
    std::stable_sort(dates.begin(), dates.end());
    const std::string_view pattern =
        repeatTypeOf(event) == RepeatType::daily ? "yyyy-MM-dd HH:mm" : "yyyy-MM-dd";
    QStringList out;
    for (const auto& date : dates) {
        if (out.size() >= limit) {
            break;
        }
        const auto text = QString::fromStdString(calendar.format(date, pattern));
        if (!out.contains(text)) {
            out << text;
        }
    }
    return out;
}

// ---- CardViewModel ------------------------------------------------------------------------

CardViewModel::CardViewModel(QObject* parent) : StoredEventModel(parent) {}

QString CardViewModel::title() const {
    return event() ? QString::fromStdString(event()->eventTitle) : QString();
}

QString CardViewModel::colorName() const {
    return event() ? QString::fromStdString(event()->eventColorString) : QString();
}

QStringList CardViewModel::colorKeys() const {
    QStringList keys;
    for (auto key : colorString) {
        keys << QString::fromLatin1(key.data(), static_cast<qsizetype>(key.size()));
    }
    return keys;
}

bool CardViewModel::setColor(const QString& colorKey) {
    return writeEventField(eventId(), "eventColorString", colorKey.toStdString());
}

bool CardViewModel::toggleStar() {
    const auto record = storedEvent(eventId());
    if (!record) {
        return false;
    }
    writeEventField(eventId(), "eventStarOrNot", !record->eventStarOrNot);
    animationToggle_ = !animationToggle_;
    emit animationToggleChanged();
    return true;
}

void CardViewModel::armDelete() {
    setDeleteArmed(true);
}

void CardViewModel::disarmDelete() {
    setDeleteArmed(false);
}

bool CardViewModel::confirmDelete() {
    if (!deleteArmed_ || !storedEvent(eventId())) {
        return false;
    }
    realmDataFunc().deleteEventData(eventId().toStdString());
    setDeleteArmed(false);
    reload();
    return true;
}

void CardViewModel::setDeleteArmed(bool armed) {
    if (armed != deleteArmed_) {
        deleteArmed_ = armed;
        emit deleteArmedChanged();
    }
}

void CardViewModel::eventLoaded() {
    nextDates_ = event() ? nextDateStrings(*event(), now(), Calendar::current()) : QStringList();
    if (!event()) {
        setDeleteArmed(false);
    }
}

// ---- EditEventTitleContentModel -----------------------------------------------------------

EditEventTitleContentModel::EditEventTitleContentModel(QObject* parent) : QObject(parent) {
    // Only whether the event still exists follows the store: the inputs belong to the user.
    observation_ = eventInfoData_.observe([this] { setExists(storedEvent(eventId_).has_value()); },
                                          queuedOn(this));
}

void EditEventTitleContentModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    emit eventIdChanged();
    load();
}

void EditEventTitleContentModel::setTitleForEvent(const QString& title) {
    if (title != title_) {
        title_ = title;
        emit inputChanged();
    }
}

void EditEventTitleContentModel::setContentForEvent(const QString& content) {
    if (content != content_) {
        content_ = content;
        emit inputChanged();
    }
}

void EditEventTitleContentModel::setExists(bool exists) {
    if (exists != exists_) {
        exists_ = exists;
        emit existsChanged();
        emit inputChanged();
    }
}

void EditEventTitleContentModel::load() {
    const auto record = storedEvent(eventId_);
    title_ = record ? QString::fromStdString(record->eventTitle) : QString();
    content_ = record ? QString::fromStdString(record->eventContent) : QString();
    setExists(record.has_value());
    emit inputChanged();
}

bool EditEventTitleContentModel::save() {
    if (title_.isEmpty()) {
        return false;
    }
    const auto record = storedEvent(eventId_);
    if (!record) {
        setExists(false);
        return false;
    }
    const auto title = title_.toStdString();
    const auto content = content_.toStdString();
    if (title != record->eventTitle) {
        writeEventField(eventId_, "eventTitle", title);
    }
    if (content != record->eventContent) {
        writeEventField(eventId_, "eventContent", content);
    }
    return true;
}

// ---- EditEventStartDateModel --------------------------------------------------------------

namespace {

constexpr EditEventStartDateModel::Day kLatestEnd{3000, 12, 31};

QString dayText(const EditEventStartDateModel::Day& d) {
    return QString::asprintf("%04d-%02d-%02d", d.year, d.month, d.day);
}

} // namespace

EditEventStartDateModel::EditEventStartDateModel(QObject* parent) : QObject(parent) {
    // The pickers keep the user's choice; the record is read again for the comparison.
    observation_ = eventInfoData_.observe(
        [this] {
            record_ = storedEvent(eventId_);
            emit recordChanged();
            emit pickersChanged();
        },
        queuedOn(this));
}

void EditEventStartDateModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    emit eventIdChanged();
    reset();
}

EditEventStartDateModel::Day
EditEventStartDateModel::composedDay(std::int64_t year, std::int64_t month, std::int64_t day) {
    const auto& calendar = Calendar::current();
    const Date date = unwrap(calendar.date(dayComponents(year, month, day)));
    const auto parts = calendar.dateComponents(kYear | kMonth | kDay, date);
    return {static_cast<int>(*parts.year), static_cast<int>(*parts.month),
            static_cast<int>(*parts.day)};
}

int EditEventStartDateModel::daysInMonth(int year, int month) const {
    return static_cast<int>(lastDayOfMonth(year, month, Calendar::current()));
}

EditEventStartDateModel::Day EditEventStartDateModel::clamped(Day d) const {
    d.month = std::clamp(d.month, 1, 12);
    d.day = std::clamp(d.day, 1, daysInMonth(d.year, d.month));
    return d;
}

EditEventStartDateModel::Day EditEventStartDateModel::recordStart() const {
    return composedDay(record_->eventStartDateYear, record_->eventStartDateMonth,
                       record_->eventStartDateDay);
}

EditEventStartDateModel::Day EditEventStartDateModel::recordEnd() const {
    return composedDay(record_->eventEndDateYear, record_->eventEndDateMonth,
                       record_->eventEndDateDay);
}

void EditEventStartDateModel::reset() {
    record_ = storedEvent(eventId_);
    if (record_) {
        start_ = recordStart();
        end_ = record_->eventHaveEndDateOrNot ? recordEnd() : start_;
    } else {
        start_ = end_ = Day{};
    }
    emit recordChanged();
    emit pickersChanged();
}

QString EditEventStartDateModel::startText() const {
    return exists() ? dayText(start_) : QString();
}

QString EditEventStartDateModel::endText() const {
    return hasEndDate() ? dayText(end_) : QString();
}

bool EditEventStartDateModel::differs() const {
    if (!record_) {
        return false;
    }
    return start_ != recordStart() || (hasEndDate() && end_ != recordEnd());
}

void EditEventStartDateModel::setStartDate(int year, int month, int day) {
    start_ = clamped({year, month, day});
    end_ = std::clamp(end_, start_, std::max(start_, kLatestEnd));
    emit pickersChanged();
}

void EditEventStartDateModel::setEndDate(int year, int month, int day) {
    end_ = std::clamp(clamped({year, month, day}), start_, std::max(start_, kLatestEnd));
    emit pickersChanged();
}

bool EditEventStartDateModel::save() {
    record_ = storedEvent(eventId_);
    if (!differs()) {
        return false;
    }
    const Day start = start_;
    const Day end = end_;
    const bool withEnd = record_->eventHaveEndDateOrNot;
    writeEventField(eventId_, "eventStartDateYear", std::int64_t{start.year});
    writeEventField(eventId_, "eventStartDateMonth", std::int64_t{start.month});
    writeEventField(eventId_, "eventStartDateDay", std::int64_t{start.day});
    if (withEnd) {
        writeEventField(eventId_, "eventEndDateYear", std::int64_t{end.year});
        writeEventField(eventId_, "eventEndDateMonth", std::int64_t{end.month});
        writeEventField(eventId_, "eventEndDateDay", std::int64_t{end.day});
    }
    return true;
}

// ---- EditShareSettingModel ----------------------------------------------------------------

EditShareSettingModel::EditShareSettingModel(QObject* parent) : StoredEventModel(parent) {
    groupObservation_ = groups_.observe([this] { reload(); }, queuedOn(this));
}

void EditShareSettingModel::eventLoaded() {
    const auto& record = event();
    shareOn_ = record && record->eventShareOrNot;
    groupId_ = record ? QString::fromStdString(record->eventShareGroupId) : QString();
    std::optional<shareGroup> group;
    if (!groupId_.isEmpty()) {
        group = Store::open().object<shareGroup>(groupId_.toStdString());
    }
    groupFound_ = group.has_value();
    groupTitle_ = group ? QString::fromStdString(group->title) : QString();
}

} // namespace tidemark
