// View models of the two repeat rule pages. RepeatRuleModel holds one rule being edited (type,
// daily time, weekday and month-day selections, the yearly date, the interval wheel, the end
// date) and applies the selection rules of RuleSelection.h. AddRepeatRuleModel keeps the
// rule in the new event form's persisted "AE_" settings, writing each change at once and
// following writes made elsewhere; EditRepeatRuleModel edits a transient copy of one
// stored event and saves what changed, one field at a time.
#pragma once

#include "editing/RuleSelection.h"
#include "records/Defaults.h"
#include "records/Store.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace tidemark {

class RepeatRuleModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    /// 0 none chosen, 1 every day, 2 every week, 3 every month, 4 every year.
    Q_PROPERTY(int eventType READ eventType WRITE setEventType NOTIFY changed)
    Q_PROPERTY(QVariantList weekList READ weekList NOTIFY changed)
    Q_PROPERTY(QVariantList monthList READ monthList NOTIFY changed)
    Q_PROPERTY(bool weekdayShortcutLit READ shortcutLit NOTIFY changed)
    Q_PROPERTY(bool complete READ complete NOTIFY changed)
    Q_PROPERTY(int hour READ hour NOTIFY changed)
    Q_PROPERTY(int minute READ minute NOTIFY changed)
    Q_PROPERTY(int startYear READ startYear NOTIFY changed)
    Q_PROPERTY(int startMonth READ startMonth NOTIFY changed)
    Q_PROPERTY(int startDay READ startDay NOTIFY changed)
    Q_PROPERTY(bool intervalOn READ intervalOn WRITE setIntervalOn NOTIFY changed)
    /// The wheel's number; the stored interval is this plus one.
    Q_PROPERTY(int intervalValue READ intervalValue WRITE setIntervalValue NOTIFY changed)
    Q_PROPERTY(int intervalRowCount READ rowCount NOTIFY changed)
    Q_PROPERTY(QString intervalUnitText READ intervalUnitText NOTIFY changed)
public:
    explicit RepeatRuleModel(QObject* parent = nullptr);

    const RepeatRuleDraft& draft() const { return draft_; }

    int eventType() const { return static_cast<int>(draft_.type); }
    void setEventType(int type);
    QVariantList weekList() const;
    QVariantList monthList() const;
    bool shortcutLit() const;
    bool complete() const;
    int hour() const { return static_cast<int>(draft_.hour); }
    int minute() const { return static_cast<int>(draft_.minute); }
    /// The yearly date as the picker shows it: today while the start date is unset (year 0).
    int startYear() const;
    int startMonth() const;
    int startDay() const;
    bool intervalOn() const { return draft_.intervalOn; }
    void setIntervalOn(bool on);
    int intervalValue() const { return static_cast<int>(draft_.intervalValue); }
    void setIntervalValue(int value);
    int rowCount() const;
    QString intervalUnitText() const;

    Q_INVOKABLE void tapWeekday(int code);
    Q_INVOKABLE void tapWeekdayShortcut();
    Q_INVOKABLE void tapMonthDay(int code);
    /// The delete.left cell: empties the month-day selection.
    Q_INVOKABLE void clearMonthDays();
    Q_INVOKABLE void setTime(int hour, int minute);
    Q_INVOKABLE void setStartDate(int year, int month, int day);

signals:
    void changed();

protected:
    enum class Part { Type, Time, Week, Month, StartDate, IntervalOn, IntervalValue, EndDate };
    /// Called after the user changed one part of the draft (the add page persists it).
    virtual void edited(Part) {}
    /// Replaces the whole draft (loading), emitting changed() when it differs.
    void replaceDraft(const RepeatRuleDraft& draft);
    void edit(Part part, const std::function<void(RepeatRuleDraft&)>& change);

    RepeatRuleDraft draft_;
};

/// The add page's model: the rule lives in the "AE_" settings shared with the new event form.
// The base is named with its namespace, as the QML type description matches bases by full name.
class AddRepeatRuleModel : public tidemark::RepeatRuleModel {
    Q_OBJECT
    QML_ELEMENT
public:
    explicit AddRepeatRuleModel(QObject* parent = nullptr);

    /// What the page does when it appears: reads the settings, fills an unset daily time (both 0)
    /// with the time now.
    Q_INVOKABLE void appear();

    Setting<std::int64_t> newEventType{"AE_newEventType", 0};
    Setting<bool> newEventTypeHaveIntervalInfo{"AE_newEventTypeHaveIntervalInfo", false};
    Setting<std::int64_t> intNumInputFromUserForCustomizeRepeatEvent{
        "AE_intNumInputFromUserForCustomizeRepeatEvent", 4};
    Setting<std::int64_t> dateInputFromUserForCustomizeRepeatEventByDayHour{
        "AE_dateInputFromUserForCustomizeRepeatEventByDayHour", 0};
    Setting<std::int64_t> dateInputFromUserForCustomizeRepeatEventByDayMin{
        "AE_dateInputFromUserForCustomizeRepeatEventByDayMin", 0};
    Setting<std::int64_t> dateInputFromUserForCustomizeRepeatEventStartDateIntYear{
        "AE_dateInputFromUserForCustomizeRepeatEventStartDateIntYear", 0};
    Setting<std::int64_t> dateInputFromUserForCustomizeRepeatEventStartDateIntMonth{
        "AE_dateInputFromUserForCustomizeRepeatEventStartDateIntMonth", 0};
    Setting<std::int64_t> dateInputFromUserForCustomizeRepeatEventStartDateIntDay{
        "AE_dateInputFromUserForCustomizeRepeatEventStartDateIntDay", 0};
    Setting<Bytes> weekArrayForAppStorageList{"AE_weekArrayForAppStorageList", {}};
    Setting<Bytes> monthArrayForAppStorageList{"AE_monthArrayForAppStorageList", {}};

protected:
    void edited(Part part) override;

private:
    void reload();
    std::vector<ObservationToken> observations_;
};

/// The card's repeat page: a transient copy of one stored event, a change check against the
/// live record, restore, and the ordered save.
class EditRepeatRuleModel : public tidemark::RepeatRuleModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY changed)
    Q_PROPERTY(bool canSave READ canSave NOTIFY changed)
    Q_PROPERTY(bool endDateOn READ endDateOn WRITE setEndDateOn NOTIFY changed)
    Q_PROPERTY(int endYear READ endYear NOTIFY changed)
    Q_PROPERTY(int endMonth READ endMonth NOTIFY changed)
    Q_PROPERTY(int endDay READ endDay NOTIFY changed)
public:
    explicit EditRepeatRuleModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool exists() const { return record_.has_value(); }
    bool canSave() const;
    bool endDateOn() const { return draft_.endDateOn; }
    void setEndDateOn(bool on);
    int endYear() const { return static_cast<int>(draft_.endYear); }
    int endMonth() const { return static_cast<int>(draft_.endMonth); }
    int endDay() const { return static_cast<int>(draft_.endDay); }

    Q_INVOKABLE void setEndDate(int year, int month, int day);
    /// The arrow.uturn.backward button: every field as the record has it.
    Q_INVOKABLE void restore();
    /// Writes what changed, in order; false (and nothing written) while the save isn't possible.
    Q_INVOKABLE bool save();

signals:
    void eventIdChanged();

private:
    QString eventId_;
    std::optional<eventInfo> record_;
    ObservationToken observation_;
};

} // namespace tidemark
