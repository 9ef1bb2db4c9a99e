#include "editing/AddNewEventForm.h"

#include "base/Fatal.h"
#include "engine/Occurrences.h"
#include "notifications/notiFunc.h"
#include "platform/linux/Haptics.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"

#include <QThread>
#include <algorithm>

namespace tidemark {

namespace {

QString localizedText(const char* key) {
    return qtTrId(key);
}

QString twoDigits(std::int64_t n) {
    return QString::asprintf("%02lld", static_cast<long long>(n));
}

/// " HH:mm" of an hour and a minute.
QString timeText(std::int64_t hour, std::int64_t minute) {
    return QLatin1Char(' ') + twoDigits(hour) + QLatin1Char(':') + twoDigits(minute);
}

bool holds(const std::vector<std::int64_t>& codes, std::int64_t code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

/// Each weekday word of the list, Monday to Sunday, each followed by a blank.
QString weekText(const std::vector<std::int64_t>& codes) {
    QString text;
    for (int code = 1; code <= 7; ++code) {
        if (holds(codes, code)) {
            text += qtTrId(QStringLiteral("weekStringForListRowViewForTimeline%1")
                               .arg(code, 2, 10, QLatin1Char('0'))
                               .toLatin1()
                               .constData()) +
                    QLatin1Char(' ');
        }
    }
    return text;
}

/// The day numbers of the list in increasing order, each with its day word, then the last-day
/// word if the list holds 99.
QString monthText(const std::vector<std::int64_t>& codes) {
    QString text;
    for (int day = 1; day <= 32; ++day) {
        if (holds(codes, day)) {
            text += QString::number(day) +
                    localizedText("stringForRepeatSettingExplanationEventDayTextAfterNum");
        }
    }
    if (holds(codes, kLastDayOfMonthCode)) {
        text += localizedText("monthSelectionNo99ForLastDayStringAtExplanation");
    }
    return text;
}

std::int64_t componentOrZero(const std::optional<std::int64_t>& value) {
    return value.value_or(0);
}

} // namespace

AddNewEventForm::AddNewEventForm(QObject* parent) : QObject(parent) {
    startPicker_ = now();
    endPicker_ = startPicker_.addingTimeInterval(864000);
    seenType_ = inputs_.newEventType;
    seenRepeat_ = inputs_.eventRepeatOrNot;
    seenNoti_ = inputs_.setNotiForThisEvent;
    watchSettings();
}

AddNewEventForm::~AddNewEventForm() = default;

void AddNewEventForm::watchSettings() {
    // Writes on the form's thread (the page, the rule pages, this object) react at once, so
    // that a load can be told from a user's change; writes from elsewhere are queued here.
    Dispatcher dispatcher = [this](std::function<void()> callback) {
        if (QThread::currentThread() == thread()) {
            callback();
        } else {
            QMetaObject::invokeMethod(this, std::move(callback), Qt::QueuedConnection);
        }
    };
    const auto watch = [&](const auto& setting, const char* which) {
        observations_.push_back(
            setting.observe([this, which] { onSettingWritten(which); }, dispatcher));
    };
    auto& i = inputs_;
    watch(i.eventColorString, "");
    watch(i.eventShareGroupId, "");
    watch(i.GroupIdForThisEvent, "");
    watch(i.eventRepeatOrNot, "repeat");
    watch(i.newEventType, "type");
    watch(i.newEventTypeHaveIntervalInfo, "");
    watch(i.intNumInputFromUserForCustomizeRepeatEvent, "");
    watch(i.weekArrayForAppStorageList, "");
    watch(i.monthArrayForAppStorageList, "");
    watch(i.haveOneEndDateForRepeatEvent, "");
    watch(i.setNotiForThisEvent, "noti");
    watch(i.notiFuncSelectedType, "");
    watch(i.addStarToThisEvent, "");
    watch(i.addMemoToThisEvent, "");
    watch(i.shareToOtherPeople, "");
    watch(i.startYear, "startYear");
    watch(i.startMonth, "startMonth");
    watch(i.startDay, "startDay");
    watch(i.endYear, "");
    watch(i.endMonth, "");
    watch(i.endDay, "");
    watch(i.byDayHour, "");
    watch(i.byDayMin, "");
    watch(i.notiHour, "");
    watch(i.notiMin, "");
    watch(i.loadEditTargetEventDataOnlyOneTimes, "");
}

bool AddNewEventForm::reactionsSkipped() const {
    return editMode_ && !inputs_.loadEditTargetEventDataOnlyOneTimes.get();
}

void AddNewEventForm::onSettingWritten(const char* which) {
    const std::string_view what(which);
    if (what == "type") {
        const auto type = inputs_.newEventType.get();
        if (type != seenType_) {
            seenType_ = type;
            // Lead times depend on the repeat type: a new type always clears the reminder rule.
            if (!reactionsSkipped()) {
                inputs_.setNotiForThisEvent = false;
                inputs_.notiHour = 0;
                inputs_.notiMin = 0;
                inputs_.notiFuncSelectedType = kNoNotiCode;
            }
        }
    } else if (what == "repeat") {
        const bool repeat = inputs_.eventRepeatOrNot;
        if (repeat != seenRepeat_) {
            seenRepeat_ = repeat;
            if (!repeat && !reactionsSkipped()) {
                inputs_.newEventType = 0;
            }
        }
    } else if (what == "noti") {
        const bool noti = inputs_.setNotiForThisEvent;
        if (noti != seenNoti_) {
            seenNoti_ = noti;
            if (!noti && !reactionsSkipped()) {
                inputs_.notiHour = 0;
                inputs_.notiMin = 0;
                inputs_.notiFuncSelectedType = kNoNotiCode;
            }
        }
    } else if (what == "startYear" || what == "startMonth" || what == "startDay") {
        const auto& changed = what == "startYear"    ? inputs_.startYear
                              : what == "startMonth" ? inputs_.startMonth
                                                     : inputs_.startDay;
        if (changed.get() != 0) {
            rebuildStartPickerFromNumbers();
        }
    }
    emit formChanged();
}

void AddNewEventForm::rebuildStartPickerFromNumbers() {
    const auto year = inputs_.startYear.get();
    const auto month = inputs_.startMonth.get();
    const auto day = inputs_.startDay.get();
    // While the three numbers are written one by one (a reset, a load), a zero among them names
    // no day the user meant: the picker waits for the last of them.
    if (year == 0 || month == 0 || day == 0) {
        return;
    }
    const auto& calendar = Calendar::current();
    const auto shown = calendar.dateComponents(kYear | kMonth | kDay, startPicker_);
    if (shown.year == year && shown.month == month && shown.day == day) {
        return; // the picker already shows that day; keep its time of day
    }
    startPicker_ = unwrap(calendar.date(dayComponents(year, month, day)));
}

void AddNewEventForm::setEditOrAddNewEventCheckValue(bool edit) {
    if (editMode_ != edit) {
        editMode_ = edit;
        emit modeChanged();
        emit formChanged();
    }
}

void AddNewEventForm::setEventId(const QString& eventId) {
    if (eventId_ != eventId) {
        eventId_ = eventId;
        emit modeChanged();
    }
}

void AddNewEventForm::setResetAllDataWhenEnterFromCardView(bool reset) {
    if (reset_ != reset) {
        reset_ = reset;
        emit modeChanged();
    }
}

void AddNewEventForm::setHaptics(Haptics* haptics) {
    if (haptics_ != haptics) {
        haptics_ = haptics;
        emit modeChanged();
    }
}

void AddNewEventForm::setTitleForEventInfo(const QString& title) {
    if (title_ != title) {
        title_ = title;
        emit formChanged();
    }
}

void AddNewEventForm::setContentForEventInfo(const QString& content) {
    if (content_ != content) {
        content_ = content;
        emit formChanged();
    }
}

QString AddNewEventForm::eventColorString() const {
    return QString::fromStdString(inputs_.eventColorString.get());
}

void AddNewEventForm::setEventColorString(const QString& color) {
    inputs_.eventColorString = color.toStdString();
}

void AddNewEventForm::setAlertForRequiredMoreInfo(bool shown) {
    if (alert_ != shown) {
        alert_ = shown;
        emit alertForRequiredMoreInfoChanged();
    }
}

int AddNewEventForm::pickerPart(Date date, int part) {
    const auto c = Calendar::current().dateComponents(kYear | kMonth | kDay, date);
    const auto value = part == 0 ? c.year : part == 1 ? c.month : c.day;
    return static_cast<int>(value.value_or(0));
}

QString AddNewEventForm::endDateText() const {
    return QString::fromStdString(Calendar::current().format(endPicker_, "yyyy-MM-dd"));
}

// ---- the checks -------------------------------------------------------------------------------

std::optional<const char*> AddNewEventForm::firstFailingCheck() const {
    const auto repeatPasses = [&] {
        if (!inputs_.eventRepeatOrNot) {
            return true;
        }
        switch (inputs_.newEventType.get()) {
        case 1:
            return true;
        case 2:
            return !decodeDayListArchive(inputs_.weekArrayForAppStorageList).empty();
        case 3:
            return !decodeDayListArchive(inputs_.monthArrayForAppStorageList).empty();
        case 4:
        case 5:
        case 6:
        case 7:
        case 8:
            return true;
        default:
            return false;
        }
    };
    if (!repeatPasses()) {
        return kAlertRepeat;
    }
    if (title_.isEmpty()) {
        return kAlertTitle;
    }
    if (inputs_.setNotiForThisEvent && inputs_.notiFuncSelectedType.get() == kNoNotiCode) {
        return kAlertNoti;
    }
    if (inputs_.shareToOtherPeople) {
        const auto group = inputs_.eventShareGroupId.get();
        if (group.empty() || !Store::open().object<shareGroup>(group)) {
            return kAlertShare;
        }
    }
    return std::nullopt;
}

QString AddNewEventForm::alertMessageKey() const {
    return QString::fromLatin1(firstFailingCheck().value_or(kAlertNothingChanged));
}

AddNewEventForm::ConfirmAction AddNewEventForm::confirmAction() const {
    if (!firstFailingCheck()) {
        if (!editMode_) {
            return ConfirmAction::Add;
        }
        if (changeCheck()) {
            return ConfirmAction::Save;
        }
    }
    return ConfirmAction::Alert;
}

// ---- the explanations -------------------------------------------------------------------------

QString AddNewEventForm::repeatExplanation() const {
    const auto type = inputs_.newEventType.get();
    if (type < 1 || type > 4) {
        return {};
    }
    const QString time = timeText(inputs_.byDayHour, inputs_.byDayMin);
    QString rule;
    switch (type) {
    case 1:
        rule = time;
        break;
    case 2:
        rule = weekText(decodeDayListArchive(inputs_.weekArrayForAppStorageList));
        break;
    case 3:
        rule = monthText(decodeDayListArchive(inputs_.monthArrayForAppStorageList));
        break;
    default:
        rule = twoDigits(inputs_.startMonth) + QLatin1Char('-') + twoDigits(inputs_.startDay);
        break;
    }
    const auto i = static_cast<std::size_t>(type - 1);
    if (!inputs_.newEventTypeHaveIntervalInfo) {
        static const char* const plain[] = {
            "type1stringForRepeatSettingExplanation", "type2stringForRepeatSettingExplanation",
            "type3stringForRepeatSettingExplanation", "type4stringForRepeatSettingExplanation"};
        // The weekly text alone has a colon before its rule.
        return localizedText(plain[i]) + (type == 2 ? QStringLiteral(": ") : QString()) + rule;
    }
    static const char* const unit[] = {
        "customizeStringAfterNumByDay", "customizeStringAfterNumByWeek",
        "customizeStringAfterNumByMonth", "customizeStringAfterNumByYear"};
    const auto every = checkedAdd(inputs_.intNumInputFromUserForCustomizeRepeatEvent, 1);
    return localizedText("customizeStringBeforeNum") +
           localizedText("customizeStringBeforeNumAfterEveryWord") + QLatin1Char(' ') +
           QString::number(every) + localizedText(unit[i]) +
           (type == 1 ? QString() : QStringLiteral(": ")) + rule;
}

QString AddNewEventForm::notiExplanation() const {
    const auto code = inputs_.notiFuncSelectedType.get();
    if (code < 0 || code >= static_cast<std::int64_t>(notiSelectionStringForEvent.size())) {
        return {};
    }
    QString text =
        qtTrId(std::string(notiSelectionStringForEvent[static_cast<std::size_t>(code)]).c_str());
    const std::int64_t hour = inputs_.notiHour;
    const std::int64_t minute = inputs_.notiMin;
    // The day leads carry a time of day; 00:00 stands for a time not picked yet.
    if (code >= 4 && !(hour == 0 && minute == 0)) {
        text += timeText(hour, minute);
    }
    return text;
}

// ---- appearance and loading -------------------------------------------------------------------

void AddNewEventForm::resetAllData() {
    auto& i = inputs_;
    i.loadEditTargetEventDataOnlyOneTimes = false;
    i.weekArrayForAppStorageList = Bytes{};
    i.monthArrayForAppStorageList = Bytes{};
    i.haveOneEndDateForRepeatEvent = false;
    i.newEventType = 0;
    i.notiFuncSelectedType = kNoNotiCode;
    i.notiHour = 0;
    i.notiMin = 0;
    i.eventRepeatOrNot = false;
    i.setNotiForThisEvent = false;
    i.addStarToThisEvent = false;
    i.addMemoToThisEvent = false;
    i.shareToOtherPeople = false;
    i.GroupIdForThisEvent = std::string();
    i.startYear = 0;
    i.startMonth = 0;
    i.startDay = 0;
    i.endYear = 0;
    i.endMonth = 0;
    i.endDay = 0;
    i.byDayHour = 0;
    i.byDayMin = 0;
    i.intNumInputFromUserForCustomizeRepeatEvent = 4;
    i.eventShareGroupId = std::string();
    i.newEventTypeHaveIntervalInfo = false;
    i.eventColorString = std::string();
}

void AddNewEventForm::appeared() {
    if (reset_) {
        resetAllData();
        setResetAllDataWhenEnterFromCardView(false);
    }
    if (editMode_ && !inputs_.loadEditTargetEventDataOnlyOneTimes) {
        loadEditTarget();
        inputs_.loadEditTargetEventDataOnlyOneTimes = true;
    }
    const auto& calendar = Calendar::current();
    if (inputs_.startYear.get() == 0) {
        const auto c = calendar.dateComponents(kYear | kMonth | kDay, startPicker_);
        inputs_.startYear = componentOrZero(c.year);
        inputs_.startMonth = componentOrZero(c.month);
        inputs_.startDay = componentOrZero(c.day);
    }
    if (inputs_.endYear.get() == 0) {
        const auto c = calendar.dateComponents(kYear | kMonth | kDay, endPicker_);
        inputs_.endYear = componentOrZero(c.year);
        inputs_.endMonth = componentOrZero(c.month);
        inputs_.endDay = componentOrZero(c.day);
    }
    emit formChanged();
}

void AddNewEventForm::loadEditTarget() {
    const auto target = Store::open().object<eventInfo>(eventId_.toStdString());
    if (!target) {
        return; // an empty stand-in: nothing to load
    }
    const eventInfo& e = *target;
    auto& i = inputs_;
    setTitleForEventInfo(QString::fromStdString(e.eventTitle));
    setContentForEventInfo(QString::fromStdString(e.eventContent));
    i.startYear = e.eventStartDateYear;
    i.startMonth = e.eventStartDateMonth;
    i.startDay = e.eventStartDateDay;
    rebuildStartPickerFromNumbers();
    i.eventRepeatOrNot = e.eventRepeatOrNot;
    i.newEventType = e.eventType;
    i.byDayHour = e.eventDateWhenEveryDayHour;
    i.byDayMin = e.eventDateWhenEveryDayMin;
    i.weekArrayForAppStorageList = e.eventDateWhenEveryWeek;
    i.monthArrayForAppStorageList = e.eventDateWhenEveryMonth;
    i.newEventTypeHaveIntervalInfo = e.eventHaveCustomizeInterval;
    // The record holds the interval itself; the picker's index is one less.
    i.intNumInputFromUserForCustomizeRepeatEvent =
        checkedSub(e.eventDateWhenCustomizeRepeatTimes, 1);
    i.setNotiForThisEvent = e.eventNotiOrNot;
    i.notiFuncSelectedType = e.eventNotiType;
    i.notiHour = e.eventNotiDateDayHour;
    i.notiMin = e.eventNotiDateDayMin;
    i.shareToOtherPeople = e.eventShareOrNot;
    i.GroupIdForThisEvent = e.eventShareGroupId;
    i.haveOneEndDateForRepeatEvent = e.eventHaveEndDateOrNot;
    i.endYear = e.eventEndDateYear;
    i.endMonth = e.eventEndDateMonth;
    i.endDay = e.eventEndDateDay;
    i.addStarToThisEvent = e.eventStarOrNot;
    i.addMemoToThisEvent = e.eventHaveMemoOrNot;
    i.eventColorString = e.eventColorString;
    if (e.eventHaveEndDateOrNot) {
        endPicker_ = unwrap(Calendar::current().date(
            dayComponents(e.eventEndDateYear, e.eventEndDateMonth, e.eventEndDateDay)));
    }
    emit formChanged();
}

// ---- the pickers ------------------------------------------------------------------------------

namespace {

/// The day picked, at the time of day that the picker showed before.
Date pickedDay(Date shown, int year, int month, int day) {
    const auto& calendar = Calendar::current();
    auto parts = calendar.dateComponents(kHour | kMinute | kSecond, shown);
    parts.year = year;
    parts.month = month;
    parts.day = day;
    return unwrap(calendar.date(parts));
}

} // namespace

void AddNewEventForm::pickStartDate(int year, int month, int day) {
    startPicker_ = pickedDay(startPicker_, year, month, day);
    const auto& calendar = Calendar::current();
    const auto start = calendar.dateComponents(kYear | kMonth | kDay, startPicker_);
    const auto next =
        calendar.dateComponents(kYear | kMonth | kDay, startPicker_.addingTimeInterval(86400));
    inputs_.startYear = componentOrZero(start.year);
    inputs_.startMonth = componentOrZero(start.month);
    inputs_.startDay = componentOrZero(start.day);
    inputs_.endYear = componentOrZero(next.year);
    inputs_.endMonth = componentOrZero(next.month);
    inputs_.endDay = componentOrZero(next.day);
    emit formChanged();
}

void AddNewEventForm::pickEndDate(int year, int month, int day) {
    endPicker_ = pickedDay(endPicker_, year, month, day);
    const auto end = Calendar::current().dateComponents(kYear | kMonth | kDay, endPicker_);
    inputs_.endYear = componentOrZero(end.year);
    inputs_.endMonth = componentOrZero(end.month);
    inputs_.endDay = componentOrZero(end.day);
    emit formChanged();
}

void AddNewEventForm::takeNumbersFromPickers() {
    const auto& calendar = Calendar::current();
    const auto start = calendar.dateComponents(kYear | kMonth | kDay, startPicker_);
    const auto end = calendar.dateComponents(kYear | kMonth | kDay, endPicker_);
    inputs_.startYear = componentOrZero(start.year);
    inputs_.startMonth = componentOrZero(start.month);
    inputs_.startDay = componentOrZero(start.day);
    inputs_.endYear = componentOrZero(end.year);
    inputs_.endMonth = componentOrZero(end.month);
    inputs_.endDay = componentOrZero(end.day);
}

// ---- the actions ------------------------------------------------------------------------------

eventObject AddNewEventForm::eventFromForm(const std::string& eventId,
                                           const std::string& eventNotiId,
                                           const std::string& timeStampGenerate) const {
    const auto& i = inputs_;
    eventObject e;
    e.eventId = eventId;
    e.eventTitle = title_.toStdString();
    e.eventContent = content_.toStdString();
    e.timeStampGenerate = timeStampGenerate;
    e.eventStartDateYear = i.startYear;
    e.eventStartDateMonth = i.startMonth;
    e.eventStartDateDay = i.startDay;
    e.eventRepeatOrNot = i.eventRepeatOrNot;
    e.eventType = i.newEventType;
    e.eventDateWhenEveryDayHour = i.byDayHour;
    e.eventDateWhenEveryDayMin = i.byDayMin;
    e.eventDateWhenEveryWeek = i.weekArrayForAppStorageList;
    e.eventDateWhenEveryMonth = i.monthArrayForAppStorageList;
    e.eventHaveCustomizeInterval = i.newEventTypeHaveIntervalInfo;
    e.eventDateWhenCustomizeRepeatTimes =
        checkedAdd(i.intNumInputFromUserForCustomizeRepeatEvent, 1);
    e.eventNotiOrNot = i.setNotiForThisEvent;
    e.eventNotiType = i.notiFuncSelectedType;
    e.eventNotiDateDayHour = i.notiHour;
    e.eventNotiDateDayMin = i.notiMin;
    e.eventNotiId = eventNotiId;
    e.eventShareOrNot = i.shareToOtherPeople;
    e.eventShareGroupId = i.GroupIdForThisEvent;
    e.eventHaveEndDateOrNot = i.haveOneEndDateForRepeatEvent;
    e.eventEndDateYear = i.endYear;
    e.eventEndDateMonth = i.endMonth;
    e.eventEndDateDay = i.endDay;
    e.eventStarOrNot = i.addStarToThisEvent;
    e.eventHaveMemoOrNot = i.addMemoToThisEvent;
    e.eventColorString = i.eventColorString;
    // The reserved fields never carry a value through the form.
    e.backupDataType01 = 0;
    e.backupDataType02.clear();
    e.backupDataType03.clear();
    return e;
}

void AddNewEventForm::confirm() {
    switch (confirmAction()) {
    case ConfirmAction::Add:
        addAction();
        break;
    case ConfirmAction::Save:
        saveAction();
        break;
    case ConfirmAction::Alert:
        setAlertForRequiredMoreInfo(!alert_);
        break;
    }
}

void AddNewEventForm::addAction() {
    if (!firstFailingCheck()) {
        takeNumbersFromPickers();
        const std::string id = newUUIDString();
        const std::string stamp = Calendar::current().format(now(), "yyyyMMddHHmmss");
        realmDataFunc().addEventData(eventFromForm(id, id, stamp));
    }
    finishAfterWrite();
}

void AddNewEventForm::saveAction() {
    const auto stored = Store::open().object<eventInfo>(eventId_.toStdString());
    if (!firstFailingCheck() && stored) {
        takeNumbersFromPickers();
        realmDataFunc().addEventData(
            eventFromForm(stored->eventId, stored->eventNotiId, stored->timeStampGenerate));
    }
    finishAfterWrite();
}

void AddNewEventForm::finishAfterWrite() {
    animationToggle_ = !animationToggle_;
    impact();
    // A save rebuilds the whole reminder plan rather than patching one event.
    notiFunc().replanAllNotiRequests();
    leftByButton_ = true;
    emit leftByButtonChanged();
    emit dismissRequested();
}

void AddNewEventForm::deleteAction() {
    // No check of its own: the delete of an event that is gone ends the program, as every
    // delete of an unknown event does.
    realmDataFunc().deleteEventData(eventId_.toStdString());
    impact();
    leftByButton_ = true;
    emit leftByButtonChanged();
    emit dismissRequested();
}

void AddNewEventForm::impact() {
    if (haptics_) {
        haptics_->impact();
    }
}

} // namespace tidemark
