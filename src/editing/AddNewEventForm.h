// The view model of the new-event form, in add mode and in full edit mode. Its inputs live in the
// persisted "AE_" settings, so that the repeat and reminder pages, which bind the same keys, read
// and write them too, and so that they survive leaving the form and a restart. Only the title, the
// content and the two date pickers are held here. The page binds to this object and only draws.
//
// A change of a watched setting, from this object or from a page that binds the same key, runs
// the form's reactions (a new repeat type clears the reminder rule, and so on) at once on the
// form's thread, except while an edit target is being loaded into the settings.
#pragma once

#include "calendar/Calendar.h"
#include "platform/linux/Haptics.h"
#include "records/Defaults.h"
#include "records/eventInfo.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <optional>
#include <vector>

namespace tidemark {

/// The persisted inputs of the form, each bound to its key with the form's own default.
struct AddNewEventInputs {
    Setting<std::string> eventColorString{"AE_eventColorString", ""};
    Setting<std::string> eventShareGroupId{"AE_eventShareGroupId", ""};
    Setting<std::string> GroupIdForThisEvent{"AE_GroupIdForThisEvent", ""};
    Setting<bool> eventRepeatOrNot{"AE_eventRepeatOrNot", false};
    Setting<std::int64_t> newEventType{"AE_newEventType", 0};
    Setting<bool> newEventTypeHaveIntervalInfo{"AE_newEventTypeHaveIntervalInfo", false};
    Setting<std::int64_t> intNumInputFromUserForCustomizeRepeatEvent{
        "AE_intNumInputFromUserForCustomizeRepeatEvent", 4};
    Setting<Bytes> weekArrayForAppStorageList{"AE_weekArrayForAppStorageList", {}};
    Setting<Bytes> monthArrayForAppStorageList{"AE_monthArrayForAppStorageList", {}};
    Setting<bool> haveOneEndDateForRepeatEvent{"AE_haveOneEndDateForRepeatEvent", false};
    Setting<bool> setNotiForThisEvent{"AE_setNotiForThisEvent", false};
    Setting<std::int64_t> notiFuncSelectedType{"AE_notiFuncSelectedType", 10};
    Setting<bool> addStarToThisEvent{"AE_addStarToThisEvent", false};
    Setting<bool> addMemoToThisEvent{"AE_addMemoToThisEvent", false};
    Setting<bool> shareToOtherPeople{"AE_shareToOtherPeople", false};
    Setting<std::int64_t> startYear{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntYear",
                                    0};
    Setting<std::int64_t> startMonth{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntMonth",
                                     0};
    Setting<std::int64_t> startDay{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntDay", 0};
    Setting<std::int64_t> endYear{"AE_dateInputFromUserForCustomizeRepeatEventEndDateIntYear", 0};
    Setting<std::int64_t> endMonth{"AE_dateInputFromUserForCustomizeRepeatEventEndDateIntMonth", 0};
    Setting<std::int64_t> endDay{"AE_dateInputFromUserForCustomizeRepeatEventEndDateIntDay", 0};
    Setting<std::int64_t> byDayHour{"AE_dateInputFromUserForCustomizeRepeatEventByDayHour", 0};
    Setting<std::int64_t> byDayMin{"AE_dateInputFromUserForCustomizeRepeatEventByDayMin", 0};
    Setting<std::int64_t> notiHour{"AE_dateInputFromUserForNotiHourAndMinIntHour", 0};
    Setting<std::int64_t> notiMin{"AE_dateInputFromUserForNotiHourAndMinIntMin", 0};
    Setting<bool> loadEditTargetEventDataOnlyOneTimes{
        "APP_FUNC_loadEditTargetEventDataOnlyOneTimes", false};
};

/// The alert's message key for the first failing check, in the order repeat, title,
/// notification, share; "..._nothingChanged" when none fails.
inline constexpr const char* kAlertRepeat =
    "alertMessageStringForNeedMoreInfoAtAddNewEventPage_repeat";
inline constexpr const char* kAlertTitle =
    "alertMessageStringForNeedMoreInfoAtAddNewEventPage_title";
inline constexpr const char* kAlertNoti = "alertMessageStringForNeedMoreInfoAtAddNewEventPage_noti";
inline constexpr const char* kAlertShare =
    "alertMessageStringForNeedMoreInfoAtAddNewEventPage_share";
inline constexpr const char* kAlertNothingChanged =
    "alertMessageStringForNeedMoreInfoAtAddNewEventPage_nothingChanged";

class AddNewEventForm : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool editOrAddNewEventCheckValue READ editOrAddNewEventCheckValue WRITE
                   setEditOrAddNewEventCheckValue NOTIFY modeChanged)
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY modeChanged)
    Q_PROPERTY(bool resetAllDataWhenEnterFromCardView READ resetAllDataWhenEnterFromCardView WRITE
                   setResetAllDataWhenEnterFromCardView NOTIFY modeChanged)
    Q_PROPERTY(tidemark::Haptics* haptics READ haptics WRITE setHaptics NOTIFY modeChanged)

    Q_PROPERTY(QString titleForEventInfo READ titleForEventInfo WRITE setTitleForEventInfo NOTIFY
                   formChanged)
    Q_PROPERTY(QString contentForEventInfo READ contentForEventInfo WRITE setContentForEventInfo
                   NOTIFY formChanged)
    Q_PROPERTY(
        QString eventColorString READ eventColorString WRITE setEventColorString NOTIFY formChanged)
    Q_PROPERTY(
        bool eventRepeatOrNot READ eventRepeatOrNot WRITE setEventRepeatOrNot NOTIFY formChanged)
    Q_PROPERTY(int newEventType READ newEventType NOTIFY formChanged)
    Q_PROPERTY(bool haveOneEndDateForRepeatEvent READ haveOneEndDateForRepeatEvent WRITE
                   setHaveOneEndDateForRepeatEvent NOTIFY formChanged)
    Q_PROPERTY(bool setNotiForThisEvent READ setNotiForThisEvent WRITE setSetNotiForThisEvent NOTIFY
                   formChanged)
    Q_PROPERTY(int notiFuncSelectedType READ notiFuncSelectedType NOTIFY formChanged)
    Q_PROPERTY(bool addStarToThisEvent READ addStarToThisEvent WRITE setAddStarToThisEvent NOTIFY
                   formChanged)
    Q_PROPERTY(bool addMemoToThisEvent READ addMemoToThisEvent WRITE setAddMemoToThisEvent NOTIFY
                   formChanged)

    // The two date pickers, as calendar numbers of the current calendar.
    Q_PROPERTY(int startPickerYear READ startPickerYear NOTIFY formChanged)
    Q_PROPERTY(int startPickerMonth READ startPickerMonth NOTIFY formChanged)
    Q_PROPERTY(int startPickerDay READ startPickerDay NOTIFY formChanged)
    Q_PROPERTY(int endPickerYear READ endPickerYear NOTIFY formChanged)
    Q_PROPERTY(int endPickerMonth READ endPickerMonth NOTIFY formChanged)
    Q_PROPERTY(int endPickerDay READ endPickerDay NOTIFY formChanged)
    /// The end-date picker's day as "yyyy-MM-dd".
    Q_PROPERTY(QString endDateText READ endDateText NOTIFY formChanged)

    Q_PROPERTY(QString repeatExplanation READ repeatExplanation NOTIFY formChanged)
    Q_PROPERTY(QString notiExplanation READ notiExplanation NOTIFY formChanged)
    /// What the confirm button does now.
    Q_PROPERTY(ConfirmAction confirmAction READ confirmAction NOTIFY formChanged)
    Q_PROPERTY(QString alertMessageKey READ alertMessageKey NOTIFY formChanged)
    Q_PROPERTY(bool alertForRequiredMoreInfo READ alertForRequiredMoreInfo WRITE
                   setAlertForRequiredMoreInfo NOTIFY alertForRequiredMoreInfoChanged)
    Q_PROPERTY(bool toggleForAddNewEventPageAnimation READ toggleForAddNewEventPageAnimation NOTIFY
                   leftByButtonChanged)
    Q_PROPERTY(bool dismissFromAddOrEditButtonToggleValue READ dismissFromAddOrEditButtonToggleValue
                   NOTIFY leftByButtonChanged)

public:
    explicit AddNewEventForm(QObject* parent = nullptr);
    ~AddNewEventForm() override;

    bool editOrAddNewEventCheckValue() const { return editMode_; }
    void setEditOrAddNewEventCheckValue(bool edit);
    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool resetAllDataWhenEnterFromCardView() const { return reset_; }
    void setResetAllDataWhenEnterFromCardView(bool reset);
    Haptics* haptics() const { return haptics_; }
    void setHaptics(Haptics* haptics);

    QString titleForEventInfo() const { return title_; }
    void setTitleForEventInfo(const QString& title);
    QString contentForEventInfo() const { return content_; }
    void setContentForEventInfo(const QString& content);
    QString eventColorString() const;
    void setEventColorString(const QString& color);
    bool eventRepeatOrNot() const { return inputs_.eventRepeatOrNot; }
    void setEventRepeatOrNot(bool on) { inputs_.eventRepeatOrNot = on; }
    int newEventType() const { return static_cast<int>(inputs_.newEventType.get()); }
    bool haveOneEndDateForRepeatEvent() const { return inputs_.haveOneEndDateForRepeatEvent; }
    void setHaveOneEndDateForRepeatEvent(bool on) { inputs_.haveOneEndDateForRepeatEvent = on; }
    bool setNotiForThisEvent() const { return inputs_.setNotiForThisEvent; }
    void setSetNotiForThisEvent(bool on) { inputs_.setNotiForThisEvent = on; }
    int notiFuncSelectedType() const {
        return static_cast<int>(inputs_.notiFuncSelectedType.get());
    }
    bool addStarToThisEvent() const { return inputs_.addStarToThisEvent; }
    void setAddStarToThisEvent(bool on) { inputs_.addStarToThisEvent = on; }
    bool addMemoToThisEvent() const { return inputs_.addMemoToThisEvent; }
    void setAddMemoToThisEvent(bool on) { inputs_.addMemoToThisEvent = on; }

    int startPickerYear() const { return pickerPart(startPicker_, 0); }
    int startPickerMonth() const { return pickerPart(startPicker_, 1); }
    int startPickerDay() const { return pickerPart(startPicker_, 2); }
    int endPickerYear() const { return pickerPart(endPicker_, 0); }
    int endPickerMonth() const { return pickerPart(endPicker_, 1); }
    int endPickerDay() const { return pickerPart(endPicker_, 2); }
    QString endDateText() const;
    Date startPickerDate() const { return startPicker_; }
    Date endPickerDate() const { return endPicker_; }

    QString repeatExplanation() const;
    QString notiExplanation() const;
    /// Add a new event, save the edited one, or show why neither can be done yet.
    enum class ConfirmAction { Add, Save, Alert };
    Q_ENUM(ConfirmAction)
    ConfirmAction confirmAction() const;
    QString alertMessageKey() const;
    bool alertForRequiredMoreInfo() const { return alert_; }
    void setAlertForRequiredMoreInfo(bool shown);
    bool toggleForAddNewEventPageAnimation() const { return animationToggle_; }
    bool dismissFromAddOrEditButtonToggleValue() const { return leftByButton_; }

    /// The four checks in order; the message key of the first that fails, or none.
    std::optional<const char*> firstFailingCheck() const;
    /// Whether an edit has something to save. Every input may be saved, changed or not.
    bool changeCheck() const { return true; }

    /// The page's appearance: the reset (when asked), the one load of the edit target, and the
    /// start and end numbers filled from the pickers where still empty.
    Q_INVOKABLE void appeared();
    /// Sets every persisted input to its fresh value (the newEventTypeForCycleOrNot choice of
    /// the repeat page stays).
    Q_INVOKABLE void resetAllData();
    /// The user picked a day on the start-date picker: the start numbers follow it, and the end
    /// numbers move to the day after. The end-date picker stays where it was.
    Q_INVOKABLE void pickStartDate(int year, int month, int day);
    /// The user picked a day on the end-date picker: the end numbers follow it.
    Q_INVOKABLE void pickEndDate(int year, int month, int day);

    /// The confirm button: the add action, the save action or the alert, as confirmAction says.
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void addAction();
    Q_INVOKABLE void saveAction();
    /// Deletes the edited event (its memos and pending reminders stay), then leaves.
    Q_INVOKABLE void deleteAction();

    /// The event that an add or save would write now, with the given identity.
    eventObject eventFromForm(const std::string& eventId, const std::string& eventNotiId,
                              const std::string& timeStampGenerate) const;

signals:
    void modeChanged();
    void formChanged();
    void alertForRequiredMoreInfoChanged();
    void leftByButtonChanged();
    /// The page should leave now (after a save or a delete).
    void dismissRequested();

private:
    void watchSettings();
    void onSettingWritten(const char* which);
    bool reactionsSkipped() const;
    void loadEditTarget();
    void rebuildStartPickerFromNumbers();
    void takeNumbersFromPickers();
    void finishAfterWrite();
    void impact();
    static int pickerPart(Date date, int part);

    AddNewEventInputs inputs_;
    bool editMode_ = false;
    QString eventId_;
    bool reset_ = false;
    QPointer<Haptics> haptics_;
    QString title_;
    QString content_;
    Date startPicker_;
    Date endPicker_;
    bool alert_ = false;
    bool animationToggle_ = false;
    bool leftByButton_ = false;

    // The last values seen of the settings whose change has a reaction.
    std::int64_t seenType_ = 0;
    bool seenRepeat_ = false;
    bool seenNoti_ = false;
    std::vector<ObservationToken> observations_;
};

} // namespace tidemark
