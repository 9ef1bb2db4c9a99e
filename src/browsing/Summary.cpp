#include "browsing/Summary.h"

#include "engine/computeFunc.h"
#include "engine/eventDateCompute.h"
#include "platform/linux/QtDispatcher.h"
#include "records/EventCodes.h"
#include "toolkit/EventRowModel.h"

#include <algorithm>

namespace tidemark {

namespace {

bool holds(const std::vector<std::int64_t>& codes, std::int64_t code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

QString trKey(const QString& key) {
    return qtTrId(key.toLatin1().constData());
}

QString twoDigits(std::int64_t n) {
    return QString::asprintf("%02lld", static_cast<long long>(n));
}

DateComponents thisMonth(Date now, const Calendar& calendar) {
    return calendar.dateComponents(kYear | kMonth, now);
}

Bytes bytesOf(const QByteArray& data) {
    return Bytes(data.begin(), data.end());
}

QByteArray byteArrayOf(const Bytes& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

} // namespace

std::int64_t daysInThisMonthPlusOne(Date now, const Calendar& calendar) {
    std::int64_t result = 30;
    auto end = thisMonth(now, calendar);
    end.month = *end.month + 1;
    end.day = 0;
    if (const auto date = calendar.date(end)) {
        result = *calendar.dateComponents(kDay, *date).day;
    }
    return result + 1;
}

std::int64_t firstWeekdayOfThisMonth(Date now, const Calendar& calendar) {
    std::int64_t result = kNoFirstWeekday;
    auto first = thisMonth(now, calendar);
    first.day = 1;
    if (const auto date = calendar.date(first)) {
        result = *calendar.dateComponents(kWeekday, *date).weekday;
    }
    return result;
}

QString weekdayShortName(std::int64_t weekday, const Calendar& calendar) {
    // A fixed week, only to have a date with that weekday.
    DateComponents anchor;
    anchor.year = 2023;
    anchor.weekOfYear = 7;
    anchor.weekday = weekday;
    const auto date = calendar.date(anchor);
    return date ? QString::fromStdString(calendar.formatSkeleton(*date, "EEE")) : QString();
}

std::vector<std::int64_t> codesForGrid(std::vector<std::int64_t> codes, std::int64_t daysPlusOne) {
    if (holds(codes, kLastDayOfMonthCode) && !holds(codes, daysPlusOne - 1)) {
        codes.push_back(daysPlusOne - 1);
    }
    return codes;
}

QString weekNamesText(const std::vector<std::int64_t>& codes) {
    QString text;
    for (int code = 1; code <= 7; ++code) {
        if (holds(codes, code)) {
            text += trKey(QStringLiteral("weekStringForListRowViewForTimeline%1")
                              .arg(code, 2, 10, QLatin1Char('0'))) +
                    QLatin1Char(' ');
        }
    }
    return text;
}

QString monthDaysText(const std::vector<std::int64_t>& codes) {
    QString text;
    for (const auto code : codes) {
        if (code != kLastDayOfMonthCode) {
            text +=
                twoDigits(code) + qtTrId("stringForRepeatSettingExplanationEventDayTextAfterNum");
        }
    }
    if (holds(codes, kLastDayOfMonthCode)) {
        text += qtTrId("monthSelectionNo99ForLastDayStringAtExplanation");
    }
    return text;
}

QString summaryDateLine(const EventFields& e) {
    const auto start =
        storedDateText(e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay);
    if (repeatTypeOf(e) != RepeatType::none && e.eventRepeatOrNot) {
        const auto end =
            e.eventHaveEndDateOrNot
                ? storedDateText(e.eventEndDateYear, e.eventEndDateMonth, e.eventEndDateDay)
                : QStringLiteral("∞");
        return start + QStringLiteral(" ~ ") + end;
    }
    return repeatTypeOf(e) == RepeatType::none ? start : QString();
}

RuleBoxData ruleBoxData(std::int64_t eventType, const std::vector<std::int64_t>& codes, Date now,
                        const Calendar& calendar) {
    RuleBoxData box;
    const auto daysPlusOne = daysInThisMonthPlusOne(now, calendar);
    const auto marked = codesForGrid(codes, daysPlusOne);
    if (repeatTypeOf(eventType) == RepeatType::weekly) {
        for (int i = 0; i < 7; ++i) {
            box.weekLabels << trKey(QStringLiteral("weekForWeekMutilSelection%1"
                                                   "AtSummaryViewSubPageForMonthlyAndWeeklyEvent")
                                        .arg(i + 1, 2, 10, QLatin1Char('0')));
            box.weekSelected.push_back(holds(marked, i + 1));
        }
        box.text = weekNamesText(codes);
    } else if (repeatTypeOf(eventType) == RepeatType::monthly) {
        const auto firstWeekday = firstWeekdayOfThisMonth(now, calendar);
        box.showsMonthGrid = firstWeekday != kNoFirstWeekday;
        if (box.showsMonthGrid) {
            for (int weekday = 1; weekday <= 7; ++weekday) {
                box.monthHeader << weekdayShortName(weekday, calendar);
            }
            // Day 1 sits under its weekday: one empty cell for each weekday before it.
            box.leadingBlanks = std::max<std::int64_t>(firstWeekday - 1, 0);
            box.dayCells = std::max<std::int64_t>(daysPlusOne - 1, 0);
            for (std::int64_t day = 1; day < daysPlusOne; ++day) {
                if (holds(marked, day)) {
                    box.selectedDays.push_back(day);
                }
            }
        }
        box.text = monthDaysText(codes);
    }
    return box;
}

SummaryRuleBoxModel::SummaryRuleBoxModel(QObject* parent) : QObject(parent) {}

void SummaryRuleBoxModel::setEventType(int eventType) {
    if (eventType == eventType_) {
        return;
    }
    eventType_ = eventType;
    emit inputChanged();
    reload();
}

void SummaryRuleBoxModel::setEventArrayData(const QByteArray& data) {
    if (data == eventArrayData_) {
        return;
    }
    eventArrayData_ = data;
    emit inputChanged();
    reload();
}

QVariantList SummaryRuleBoxModel::weekSelected() const {
    QVariantList list;
    for (const bool selected : box_.weekSelected) {
        list << selected;
    }
    return list;
}

QVariantList SummaryRuleBoxModel::selectedDays() const {
    QVariantList list;
    for (const auto day : box_.selectedDays) {
        list << static_cast<int>(day);
    }
    return list;
}

void SummaryRuleBoxModel::reload() {
    const bool listed = repeatTypeOf(eventType_) == RepeatType::weekly ||
                        repeatTypeOf(eventType_) == RepeatType::monthly;
    box_ = listed && !eventArrayData_.isEmpty()
               ? ruleBoxData(eventType_, decodeDayList(bytesOf(eventArrayData_)), now(),
                             Calendar::current())
               : RuleBoxData{};
    emit changed();
}

SummaryViewModel::SummaryViewModel(QObject* parent) : StoredEventModel(parent) {}

void SummaryViewModel::eventLoaded() {
    const auto& found = event();
    dateLine_.clear();
    isOver_ = false;
    eventType_ = 0;
    repeating_ = false;
    ruleArchive_.clear();
    ruleText_.clear();
    if (found) {
        const auto& e = *found;
        dateLine_ = summaryDateLine(e);
        isOver_ = eventIsOver(e, now(), Calendar::current());
        eventType_ = static_cast<int>(e.eventType);
        repeating_ = e.eventRepeatOrNot;
        const eventDateCompute engine;
        if (!e.eventRepeatOrNot) {
            ruleText_ = QString::fromStdString(engine.fullDateString(
                e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay));
        } else if (repeatTypeOf(e) == RepeatType::daily) {
            ruleText_ = twoDigits(e.eventDateWhenEveryDayHour) + QLatin1Char(':') +
                        twoDigits(e.eventDateWhenEveryDayMin);
        } else if (repeatTypeOf(e) == RepeatType::weekly) {
            ruleArchive_ = byteArrayOf(e.eventDateWhenEveryWeek);
        } else if (repeatTypeOf(e) == RepeatType::monthly) {
            ruleArchive_ = byteArrayOf(e.eventDateWhenEveryMonth);
        } else if (repeatTypeOf(e) == RepeatType::yearly) {
            ruleText_ = QString::fromStdString(engine.shortDateString(
                e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay));
        }
    }
}

} // namespace tidemark
