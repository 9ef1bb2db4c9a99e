#include "editing/NotiRuleModels.h"

#include "calendar/Calendar.h"
#include "platform/linux/QtDispatcher.h"

namespace tidemark {

namespace {

bool sameDraft(const NotiDraft& a, const NotiDraft& b) {
    return a.on == b.on && a.code == b.code && a.hour == b.hour && a.minute == b.minute;
}

} // namespace

// --- NotiRuleModel ---------------------------------------------------------------------------

NotiRuleModel::NotiRuleModel(QObject* parent) : QObject(parent) {}

QVariantList NotiRuleModel::codes() const {
    QVariantList out;
    for (auto code : notiByEventType(type_)) {
        out.push_back(static_cast<int>(code));
    }
    return out;
}

void NotiRuleModel::selectCode(int code) {
    NotiDraft next = draft_;
    next.code = code;
    edit(Part::Code, next);
}

QString NotiRuleModel::codeText(int code) const {
    const std::string key = notiCodeKey(code);
    return key.empty() ? QString() : qtTrId(key.c_str());
}

void NotiRuleModel::setTime(int hour, int minute) {
    NotiDraft next = draft_;
    next.hour = hour;
    next.minute = minute;
    edit(Part::Time, next);
}

void NotiRuleModel::edit(Part part, const NotiDraft& next) {
    if (sameDraft(next, draft_)) {
        return;
    }
    draft_ = next;
    edited(part);
    emit changed();
}

void NotiRuleModel::replace(std::int64_t type, const NotiDraft& draft) {
    if (type == type_ && sameDraft(draft, draft_)) {
        return;
    }
    type_ = type;
    draft_ = draft;
    emit changed();
}

// --- AddNotiRuleModel ------------------------------------------------------------------------

AddNotiRuleModel::AddNotiRuleModel(QObject* parent) : NotiRuleModel(parent) {
    auto follow = [this](const auto& setting) {
        observations_.push_back(setting.observe([this] { reload(); }, queuedOn(this)));
    };
    follow(eventRepeatOrNot);
    follow(newEventType);
    follow(notiFuncSelectedType);
    follow(dateInputFromUserForNotiHourAndMinIntHour);
    follow(dateInputFromUserForNotiHourAndMinIntMin);
    reload();
}

void AddNotiRuleModel::reload() {
    NotiDraft d;
    d.on = true;
    d.code = notiFuncSelectedType;
    d.hour = dateInputFromUserForNotiHourAndMinIntHour;
    d.minute = dateInputFromUserForNotiHourAndMinIntMin;
    // The form's type; an event that does not repeat offers the codes of type 0.
    replace(eventRepeatOrNot ? newEventType.get() : 0, d);
}

void AddNotiRuleModel::appear() {
    reload();
    if (draft_.hour == 0 && draft_.minute == 0) {
        const auto c = Calendar::current().dateComponents(kHour | kMinute, now());
        setTime(static_cast<int>(c.hour.value_or(0)), static_cast<int>(c.minute.value_or(0)));
    }
}

void AddNotiRuleModel::edited(Part part) {
    switch (part) {
    case Part::Code:
        notiFuncSelectedType = draft_.code;
        break;
    case Part::Time:
        dateInputFromUserForNotiHourAndMinIntHour = draft_.hour;
        dateInputFromUserForNotiHourAndMinIntMin = draft_.minute;
        break;
    case Part::Switch:
        break; // the switch lives in the form
    }
}

// --- EditNotiRuleModel --------------------------------------------------------------------

EditNotiRuleModel::EditNotiRuleModel(QObject* parent) : NotiRuleModel(parent) {}

void EditNotiRuleModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    emit eventIdChanged();
    load();
}

void EditNotiRuleModel::load() {
    record_ =
        eventId_.isEmpty() ? std::nullopt : Store::open().object<eventInfo>(eventId_.toStdString());
    if (record_) {
        replace(record_->eventType, notiDraftOf(*record_));
    } else {
        replace(0, NotiDraft{});
    }
    emit changed(); // exists may have changed with an equal draft
}

void EditNotiRuleModel::setNotiOn(bool on) {
    NotiDraft next = draft_;
    next.on = on;
    edit(Part::Switch, next);
}

void EditNotiRuleModel::edited(Part part) {
    if (part == Part::Switch && !draft_.on && record_) {
        applyFieldWrites(record_->eventId, {{"eventNotiOrNot", false}}, *record_);
    }
}

bool EditNotiRuleModel::canConfirm() const {
    return record_ && (!draft_.on || notiCodeOffered(type_, draft_.code));
}

bool EditNotiRuleModel::confirm() {
    if (!canConfirm()) {
        return false;
    }
    applyFieldWrites(record_->eventId, notiDraftWrites(draft_), *record_);
    return true;
}

} // namespace tidemark
