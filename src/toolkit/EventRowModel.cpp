#include "toolkit/EventRowModel.h"

#include "engine/computeFunc.h"
#include "platform/linux/QtDispatcher.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"

#include <algorithm>

namespace tidemark {

namespace {

QString tr(const char* key) {
    return qtTrId(key);
}

QString typeTextOf(const eventInfo& e) {
    static const char* const every[] = {
        "textForEveryDayStringForListRowViewForTimeline",
        "textForEveryWeekStringForListRowViewForTimeline",
        "textForEveryMonthStringForListRowViewForTimeline",
        "textForEveryYearStringForListRowViewForTimeline",
    };
    static const char* const afterNum[] = {
        "customizeStringAfterNumByDay",
        "customizeStringAfterNumByWeek",
        "customizeStringAfterNumByMonth",
        "customizeStringAfterNumByYear",
    };
    if (e.eventType < 1 || e.eventType > 4) {
        return {};
    }
    const auto i = static_cast<std::size_t>(e.eventType - 1);
    if (!e.eventHaveCustomizeInterval) {
        return tr(every[i]);
    }
    // The stored value is the interval itself ("every N"): the form stores its input plus one.
    return tr("customizeIntervalStringBeforeNum") +
           QString::number(e.eventDateWhenCustomizeRepeatTimes) + tr(afterNum[i]);
}

/// The week text: the day word of each code the list holds, in the fixed order Monday to Sunday.
QString weekText(const std::vector<std::int64_t>& codes) {
    QStringList words;
    for (int code = 1; code <= 7; ++code) {
        if (std::find(codes.begin(), codes.end(), code) != codes.end()) {
            words << tr(QStringLiteral("weekStringForListRowViewForTimeline%1")
                            .arg(code, 2, 10, QLatin1Char('0'))
                            .toLatin1()
                            .constData());
        }
    }
    return words.join(QLatin1Char(' '));
}

/// The month text: each day number the list holds, in increasing order, with its day word; then
/// the last-day text if the list holds 99.
QString monthText(const std::vector<std::int64_t>& codes) {
    QString text;
    for (int day = 1; day <= 32; ++day) {
        if (std::find(codes.begin(), codes.end(), day) != codes.end()) {
            text +=
                QString::number(day) + tr("stringForRepeatSettingExplanationEventDayTextAfterNum");
        }
    }
    if (std::find(codes.begin(), codes.end(), kLastDayOfMonthCode) != codes.end()) {
        text += tr("monthSelectionNo99ForLastDayStringAtExplanation");
    }
    return text.trimmed();
}

QString twoDigits(std::int64_t n) {
    return QString::asprintf("%02lld", static_cast<long long>(n));
}

} // namespace

QString storedDateText(std::int64_t year, std::int64_t month, std::int64_t day) {
    return QString::asprintf("%04lld-%02lld-%02lld", static_cast<long long>(year),
                             static_cast<long long>(month), static_cast<long long>(day));
}

EventRowData eventRowData(const eventInfo& e, Date now, const Calendar& calendar) {
    EventRowData row;
    row.exists = true;
    row.title = QString::fromStdString(e.eventTitle);
    row.colorName = QString::fromStdString(e.eventColorString);
    if (e.eventStarOrNot) {
        row.symbols << QStringLiteral("star.fill");
    }
    if (e.eventNotiOrNot) {
        row.symbols << QStringLiteral("bell.badge");
    }
    if (e.eventRepeatOrNot) {
        row.symbols << QStringLiteral("repeat");
    }
    if (e.eventShareOrNot) {
        row.symbols << QStringLiteral("shareplay");
    }
    row.typeText = typeTextOf(e);
    row.repeating = e.eventRepeatOrNot;
    row.hasMemo = e.eventHaveMemoOrNot;
    row.content = QString::fromStdString(e.eventContent);

    if (!e.eventRepeatOrNot) {
        const auto count = QString::fromStdString(dayCountString(e, now, calendar));
        if (count == QLatin1String("0")) {
            row.isToday = true;
            row.dayCountUnit = tr("todayTextForDayCountStringForListRowViewForTimeline");
            row.dayCountText = row.dayCountUnit;
        } else {
            row.dayCountNumber = count;
            row.dayCountUnit = tr("textForDayStringForListRowViewForTimeline");
            row.dayCountText = count + row.dayCountUnit;
        }
    }

    const auto start =
        storedDateText(e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay);
    if (repeatTypeOf(e) == RepeatType::none) {
        row.datesText = start;
    } else {
        const auto end =
            e.eventHaveEndDateOrNot
                ? storedDateText(e.eventEndDateYear, e.eventEndDateMonth, e.eventEndDateDay)
                : QStringLiteral("∞");
        row.datesText = start + QStringLiteral(" ~ ") + end;
    }

    switch (repeatTypeOf(e)) {
    case RepeatType::daily:
        row.detailsText = row.typeText + QLatin1Char(' ') + twoDigits(e.eventDateWhenEveryDayHour) +
                          QLatin1Char(':') + twoDigits(e.eventDateWhenEveryDayMin);
        break;
    case RepeatType::weekly:
        row.detailsText = row.typeText + QStringLiteral(": ") +
                          weekText(decodeDayListArchive(e.eventDateWhenEveryWeek, kCantDecodeData));
        break;
    case RepeatType::monthly:
        row.detailsText =
            row.typeText + QStringLiteral(": ") +
            monthText(decodeDayListArchive(e.eventDateWhenEveryMonth, kCantDecodeData));
        break;
    case RepeatType::yearly:
        row.detailsText = row.typeText + QStringLiteral(": ") + twoDigits(e.eventStartDateMonth) +
                          QLatin1Char('-') + twoDigits(e.eventStartDateDay);
        break;
    default:
        break;
    }
    if ((e.eventRepeatOrNot && repeatTypeOf(e) == RepeatType::weekly) ||
        repeatTypeOf(e) == RepeatType::monthly) {
        row.nextDateText = QString::fromStdString(nextDateString(e, now, calendar));
    }
    return row;
}

EventRowModel::EventRowModel(QObject* parent) : StoredEventModel(parent) {}

void EventRowModel::eventLoaded() {
    row_ = event() ? eventRowData(*event(), now(), Calendar::current()) : EventRowData{};
}

} // namespace tidemark
