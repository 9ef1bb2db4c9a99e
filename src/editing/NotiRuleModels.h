// View models of the two reminder pages. NotiRuleModel holds a lead-time code and a time of day
// for one repeat type and knows which codes that type offers. AddNotiRuleModel works on the new
// event form's "AE_" settings; EditNotiRuleModel works on a copy of one stored event, writes
// the switch at once when it is turned off, and writes the four reminder fields on confirm.
#pragma once

#include "editing/RuleSelection.h"
#include "records/Defaults.h"
#include "records/Store.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class NotiRuleModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    /// The repeat type whose codes are offered (0 for an event that does not repeat).
    Q_PROPERTY(int eventType READ eventType NOTIFY changed)
    /// The offered codes, in display order.
    Q_PROPERTY(QVariantList codes READ codes NOTIFY changed)
    /// `notiFuncSelectedType`: 10 while none is chosen.
    Q_PROPERTY(int selectedCode READ selectedCode WRITE selectCode NOTIFY changed)
    Q_PROPERTY(bool codeChosen READ codeChosen NOTIFY changed)
    /// The chosen code is one of the offered ones (a code left from another type is not).
    Q_PROPERTY(bool codeOffered READ codeOffered NOTIFY changed)
    /// The chosen code fires at a time of day, so the time picker is shown.
    Q_PROPERTY(bool needsTime READ needsTime NOTIFY changed)
    Q_PROPERTY(int hour READ hour NOTIFY changed)
    Q_PROPERTY(int minute READ minute NOTIFY changed)
public:
    explicit NotiRuleModel(QObject* parent = nullptr);

    int eventType() const { return static_cast<int>(type_); }
    QVariantList codes() const;
    int selectedCode() const { return static_cast<int>(draft_.code); }
    void selectCode(int code);
    bool codeChosen() const { return draft_.code != kNoNotiCode; }
    bool codeOffered() const { return notiCodeOffered(type_, draft_.code); }
    bool needsTime() const { return notiCodeNeedsTime(draft_.code); }
    int hour() const { return static_cast<int>(draft_.hour); }
    int minute() const { return static_cast<int>(draft_.minute); }

    /// The text of a code ("" for none).
    Q_INVOKABLE QString codeText(int code) const;
    /// The time picker and the four shortcut buttons (09:00, 12:00, 18:00, 21:00).
    Q_INVOKABLE void setTime(int hour, int minute);

    const NotiDraft& draft() const { return draft_; }

signals:
    void changed();

protected:
    enum class Part { Switch, Code, Time };
    virtual void edited(Part) {}
    void edit(Part part, const NotiDraft& next);
    void replace(std::int64_t type, const NotiDraft& draft);

    std::int64_t type_ = 0;
    NotiDraft draft_;
};

/// The add page's model, on the "AE_" settings of the new event form.
// The base is named with its namespace, as the QML type description matches bases by full name.
class AddNotiRuleModel : public tidemark::NotiRuleModel {
    Q_OBJECT
    QML_ELEMENT
    /// The checkmark: a code is chosen.
    Q_PROPERTY(bool canConfirm READ codeChosen NOTIFY changed)
public:
    explicit AddNotiRuleModel(QObject* parent = nullptr);

    /// Reads the settings; an unset time (both 0) is filled with the time now.
    Q_INVOKABLE void appear();

    Setting<bool> eventRepeatOrNot{"AE_eventRepeatOrNot", false};
    Setting<std::int64_t> newEventType{"AE_newEventType", 0};
    Setting<std::int64_t> notiFuncSelectedType{"AE_notiFuncSelectedType", kNoNotiCode};
    Setting<std::int64_t> dateInputFromUserForNotiHourAndMinIntHour{
        "AE_dateInputFromUserForNotiHourAndMinIntHour", 0};
    Setting<std::int64_t> dateInputFromUserForNotiHourAndMinIntMin{
        "AE_dateInputFromUserForNotiHourAndMinIntMin", 0};

protected:
    void edited(Part part) override;

private:
    void reload();
    std::vector<ObservationToken> observations_;
};

/// The card's reminder page over one stored event.
class EditNotiRuleModel : public tidemark::NotiRuleModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY changed)
    /// `setNotiForThisEvent`; turning it off writes "eventNotiOrNot" false at once.
    Q_PROPERTY(bool notiOn READ notiOn WRITE setNotiOn NOTIFY changed)
    /// The checkmark: the reminder is off, or on with a code that the event's type offers.
    Q_PROPERTY(bool canConfirm READ canConfirm NOTIFY changed)
public:
    explicit EditNotiRuleModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool exists() const { return record_.has_value(); }
    bool notiOn() const { return draft_.on; }
    void setNotiOn(bool on);
    bool canConfirm() const;

    /// Fills the page from the record.
    Q_INVOKABLE void load();
    /// Writes "eventNotiOrNot", "eventNotiType", "eventNotiDateDayHour", "eventNotiDateDayMin";
    /// false (nothing written) while the confirm isn't possible.
    Q_INVOKABLE bool confirm();

signals:
    void eventIdChanged();

protected:
    void edited(Part part) override;

private:
    QString eventId_;
    std::optional<eventInfo> record_;
};

} // namespace tidemark
