#include "toolkit/MonthModel.h"

#include "base/Fatal.h"
#include "calendar/Calendar.h"
#include "engine/RuleBatch.h"
#include "platform/linux/QtDispatcher.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <algorithm>
#include <compare>
#include <map>
#include <memory>

namespace tidemark {

namespace {

Date toDate(const QDateTime& moment) {
    return Date{static_cast<double>(moment.toMSecsSinceEpoch()) / 1000.0};
}

QDateTime toQDateTime(Date date) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.secondsSince1970 * 1000.0));
}

struct Day {
    int year = 0, month = 0, day = 0;
    auto operator<=>(const Day&) const = default;
};

Day dayOf(const Calendar& calendar, Date date) {
    const auto c = calendar.dateComponents(kYear | kMonth | kDay, date);
    return {static_cast<int>(c.year.value_or(0)), static_cast<int>(c.month.value_or(0)),
            static_cast<int>(c.day.value_or(0))};
}

/// Midnight of that day; numbers that don't compose are a fatal stop.
Date composed(const Calendar& calendar, std::int64_t year, std::int64_t month, std::int64_t day) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    return unwrap(calendar.date(c));
}

} // namespace

QStringList sortedColorNames(const std::vector<std::string>& eventColorStrings) {
    QStringList names;
    names.reserve(static_cast<qsizetype>(eventColorStrings.size()));
    for (const auto& color : eventColorStrings) {
        names << (color.empty() || color == "-" ? QStringLiteral("default")
                                                : QString::fromStdString(color));
    }
    // Plain string order: the arcs follow the colour names, not the events.
    std::sort(names.begin(), names.end());
    return names;
}

MonthModel::MonthModel(QObject* parent)
    : QAbstractListModel(parent), batch_(std::make_unique<KeptRuleBatch>()) {
    eventsObservation_ = Results<eventInfo>().observe([this] { rebuild(); }, queuedOn(this));
    rebuild();
}

MonthModel::~MonthModel() = default;

void MonthModel::setMonthToShowDate(const QDateTime& date) {
    if (date == monthToShowDate_) {
        return;
    }
    monthToShowDate_ = date;
    rebuild();
    emit monthToShowDateChanged();
}

void MonthModel::setSelectedDate(const QDateTime& date) {
    if (date == selectedDate_) {
        return;
    }
    selectedDate_ = date;
    updateSelection();
    emit selectedDateChanged();
}

void MonthModel::moveMonth(int months) {
    const auto& calendar = Calendar::current();
    const Date shown = monthToShowDate_.isValid() ? toDate(monthToShowDate_) : now();
    const auto c = calendar.dateComponents(kYear | kMonth, shown);
    setMonthToShowDate(toQDateTime(composed(calendar, *c.year, *c.month + months, 1)));
}

void MonthModel::refresh() {
    rebuild();
}

void MonthModel::rebuild() {
    const auto& calendar = Calendar::current();
    const Date shown = monthToShowDate_.isValid() ? toDate(monthToShowDate_) : now();
    const auto c = calendar.dateComponents(kYear | kMonth, shown);
    const std::int64_t year = *c.year;
    const std::int64_t month = *c.month;
    const Date first = composed(calendar, year, month, 1);
    const auto firstWeekday = calendar.dateComponents(kWeekday, first).weekday.value_or(1);
    const std::int64_t lead = (firstWeekday - calendar.firstWeekday() + 7) % 7;
    const Day today = dayOf(calendar, now());
    const Day selected = dayOf(calendar, selectedDate_.isValid() ? toDate(selectedDate_) : now());

    std::vector<Date> dates;
    dates.reserve(kCellCount);
    for (int i = 0; i < kCellCount; ++i) {
        dates.push_back(composed(calendar, year, month, 1 - lead + i));
    }
    // One batch over the store's events answers all 42 days. The store hands out the result set
    // it read before until the events table takes a commit, and the batch keeps its compiled
    // rules for as long as that set, the calendar and the day stay the same.
    const auto events = Results<eventInfo>().shared();
    const auto onDates = batch_->over(events, calendar).indicesOnDates(dates);
    if (events != paletteEvents_) {
        learnPalette(events);
    }

    std::vector<Cell> cells;
    cells.reserve(kCellCount);
    for (int i = 0; i < kCellCount; ++i) {
        const Date date = dates[static_cast<std::size_t>(i)];
        Cell cell;
        const Day day = dayOf(calendar, date);
        cell.date = toQDateTime(date);
        cell.year = day.year;
        cell.month = day.month;
        cell.day = day.day;
        // The day with a leading zero, as the pattern "dd" writes it.
        cell.dayText = QStringLiteral("%1").arg(day.day, 2, 10, QLatin1Char('0'));
        cell.isCurrentMonth = day.year == year && day.month == month;
        cell.isPast = day < today;
        cell.isToday = day == today;
        cell.isSelected = day == selected;
        // The day's colour names counted per palette place and written out in the palette's
        // order: the list that sorting all of them gives, without sorting thousands of names.
        std::vector<qsizetype> counts(static_cast<std::size_t>(palette_.size()), 0);
        for (const auto index : onDates[static_cast<std::size_t>(i)]) {
            ++counts[static_cast<std::size_t>(paletteOf_[index])];
        }
        cell.colorNames.reserve(
            static_cast<qsizetype>(onDates[static_cast<std::size_t>(i)].size()));
        for (qsizetype place = 0; place < palette_.size(); ++place) {
            for (qsizetype k = 0; k < counts[static_cast<std::size_t>(place)]; ++k) {
                cell.colorNames.append(palette_[place]);
            }
        }
        cells.push_back(std::move(cell));
    }

    QStringList symbols;
    for (int i = 0; i < 7; ++i) {
        symbols << QString::fromStdString(calendar.format(toDate(cells[i].date), "EEEEEE"));
    }
    monthTitle_ = QString::fromStdString(calendar.formatSkeleton(first, "yMMMM"));
    weekdaySymbols_ = symbols;

    const bool firstBuild = cells_.empty();
    cells_ = std::move(cells);
    ++buildCount_;
    if (firstBuild) {
        beginResetModel();
        endResetModel();
    } else {
        // The grid always has 42 cells: redraw them in place instead of making new delegates.
        emit dataChanged(index(0), index(kCellCount - 1));
    }
}

void MonthModel::learnPalette(std::shared_ptr<const std::vector<eventInfo>> events) {
    // The distinct colour strings, their names in sorted order, and each event's place there.
    std::map<std::string, int> distinct;
    for (const eventInfo& event : *events) {
        distinct.emplace(event.eventColorString, 0);
    }
    QStringList names;
    for (const auto& entry : distinct) {
        names << sortedColorNames({entry.first});
    }
    QStringList sorted = names;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    int i = 0;
    for (auto& entry : distinct) {
        entry.second = static_cast<int>(std::lower_bound(sorted.begin(), sorted.end(), names[i++]) -
                                        sorted.begin());
    }
    paletteOf_.clear();
    paletteOf_.reserve(events->size());
    for (const eventInfo& event : *events) {
        paletteOf_.push_back(distinct.find(event.eventColorString)->second);
    }
    palette_ = std::move(sorted);
    paletteEvents_ = std::move(events);
}

void MonthModel::updateSelection() {
    const auto& calendar = Calendar::current();
    const Day selected = dayOf(calendar, selectedDate_.isValid() ? toDate(selectedDate_) : now());
    for (int i = 0; i < static_cast<int>(cells_.size()); ++i) {
        auto& cell = cells_[static_cast<std::size_t>(i)];
        const bool isSelected = Day{cell.year, cell.month, cell.day} == selected;
        if (isSelected != cell.isSelected) {
            cell.isSelected = isSelected;
            emit dataChanged(index(i), index(i), {IsSelectedRole});
        }
    }
}

int MonthModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cells_.size());
}

QVariant MonthModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= static_cast<int>(cells_.size())) {
        return {};
    }
    const auto& cell = cells_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case DateRole:
        return cell.date;
    case DayTextRole:
        return cell.dayText;
    case IsCurrentMonthRole:
        return cell.isCurrentMonth;
    case IsPastRole:
        return cell.isPast;
    case IsTodayRole:
        return cell.isToday;
    case IsSelectedRole:
        return cell.isSelected;
    case ColorNamesRole:
        return cell.colorNames;
    default:
        return {};
    }
}

QHash<int, QByteArray> MonthModel::roleNames() const {
    return {{DateRole, "date"},
            {DayTextRole, "dayText"},
            {IsCurrentMonthRole, "isCurrentMonth"},
            {IsPastRole, "isPast"},
            {IsTodayRole, "isToday"},
            {IsSelectedRole, "isSelected"},
            {ColorNamesRole, "colorNames"}};
}

} // namespace tidemark
