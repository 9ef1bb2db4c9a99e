#include "editing/FormDatePickerModel.h"

#include "base/Fatal.h"
#include "calendar/Calendar.h"
#include "engine/Occurrences.h"

#include <algorithm>

namespace tidemark {

namespace {

/// The open sides of a range.
constexpr int kEarliestKey = 19000101;
constexpr int kLatestKey = 30001231;

int dayKey(int year, int month, int day) {
    return year * 10000 + month * 100 + day;
}

int floorDiv(int value, int divisor) {
    return value >= 0 ? value / divisor : -((-value + divisor - 1) / divisor);
}

int pageOf(int year) {
    return floorDiv(year, FormDatePickerModel::kYearsPerPage) * FormDatePickerModel::kYearsPerPage;
}

} // namespace

FormDatePickerModel::FormDatePickerModel(QObject* parent) : QObject(parent) {
    const auto& calendar = Calendar::current();
    const auto today = calendar.dateComponents(kYear | kMonth | kDay, now());
    year_ = static_cast<int>(today.year.value_or(2000));
    month_ = static_cast<int>(today.month.value_or(1));
    day_ = static_cast<int>(today.day.value_or(1));
    for (int m = 1; m <= 12; ++m) {
        const Date first = unwrap(calendar.date(dayComponents(2001, m, 1)));
        monthSymbols_ << QString::fromStdString(calendar.formatSkeleton(first, "MMM"));
    }
    rebuild();
}

void FormDatePickerModel::setYear(int year) {
    if (year_ != year) {
        moveTo(year, month_, day_);
    }
}

void FormDatePickerModel::setMonth(int month) {
    if (month_ != month) {
        moveTo(year_, month, day_);
    }
}

void FormDatePickerModel::setMode(Mode mode) {
    if (mode_ != mode) {
        mode_ = mode;
        emit changed();
    }
}

void FormDatePickerModel::setMinimumKey(int key) {
    if (minimumKey_ != key) {
        minimumKey_ = key;
        emit changed();
    }
}

void FormDatePickerModel::setMaximumKey(int key) {
    if (maximumKey_ != key) {
        maximumKey_ = key;
        emit changed();
    }
}

int FormDatePickerModel::firstKey() const {
    return minimumKey_ > 0 ? minimumKey_ : kEarliestKey;
}

int FormDatePickerModel::lastKey() const {
    return maximumKey_ > 0 ? maximumKey_ : kLatestKey;
}

QString FormDatePickerModel::title() const {
    switch (mode_) {
    case Mode::Days:
        return monthTitle_;
    case Mode::Months:
        return yearTitle_;
    case Mode::Years:
        break;
    }
    const int first = pageOf(year_);
    return QStringLiteral("%1 – %2").arg(first).arg(first + kYearsPerPage - 1);
}

QVariantList FormDatePickerModel::years() const {
    QVariantList page;
    for (int y = pageOf(year_); y < pageOf(year_) + kYearsPerPage; ++y) {
        page << y;
    }
    return page;
}

bool FormDatePickerModel::canStep(int direction) const {
    const int first = firstKey() / 10000;
    const int last = lastKey() / 10000;
    switch (mode_) {
    case Mode::Days: {
        const int shown = year_ * 100 + month_;
        return direction < 0 ? firstKey() / 100 < shown : lastKey() / 100 > shown;
    }
    case Mode::Months:
        return direction < 0 ? first < year_ : last > year_;
    case Mode::Years:
        return direction < 0 ? pageOf(first) < pageOf(year_) : pageOf(last) > pageOf(year_);
    }
    return false;
}

void FormDatePickerModel::show(int year, int month, int day) {
    const bool monthMoved = year != year_ || month != month_;
    year_ = year;
    month_ = month;
    day_ = day;
    mode_ = Mode::Days;
    if (monthMoved || month_ < 1 || month_ > 12) {
        rebuild();
    }
    day_ = std::clamp(day_, 1, daysInMonth(year_, month_));
    emit changed();
}

void FormDatePickerModel::step(int direction) {
    const int months = mode_ == Mode::Days ? 1 : mode_ == Mode::Months ? 12 : 12 * kYearsPerPage;
    moveMonth(direction * months);
}

void FormDatePickerModel::moveMonth(int months) {
    moveTo(year_, month_ + months, day_);
}

void FormDatePickerModel::moveDays(int days) {
    const auto& calendar = Calendar::current();
    const Date target = unwrap(calendar.date(dayComponents(year_, month_, day_ + days)));
    const auto parts = calendar.dateComponents(kYear | kMonth | kDay, target);
    moveTo(static_cast<int>(parts.year.value_or(year_)), static_cast<int>(parts.month.value_or(1)),
           static_cast<int>(parts.day.value_or(1)));
}

void FormDatePickerModel::chooseYear(int year) {
    mode_ = Mode::Months;
    moveTo(year, month_, day_);
}

void FormDatePickerModel::chooseMonth(int month) {
    mode_ = Mode::Days;
    moveTo(year_, month, day_);
}

void FormDatePickerModel::toggleYears() {
    setMode(mode_ == Mode::Years ? Mode::Days : Mode::Years);
}

bool FormDatePickerModel::handleKey(int key, int modifiers) {
    // One cell and one row of the grid on show: 7 days, 3 months or 4 years a row.
    const int row = mode_ == Mode::Days ? 7 : mode_ == Mode::Months ? 3 : 4;
    const auto moveCells = [&](int cells) {
        if (mode_ == Mode::Days) {
            moveDays(cells);
        } else {
            moveMonth(mode_ == Mode::Months ? cells : cells * 12);
        }
    };
    switch (key) {
    case Qt::Key_Left:
        moveCells(-1);
        return true;
    case Qt::Key_Right:
        moveCells(1);
        return true;
    case Qt::Key_Up:
        moveCells(-row);
        return true;
    case Qt::Key_Down:
        moveCells(row);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const int direction = key == Qt::Key_PageUp ? -1 : 1;
        if (mode_ == Mode::Days && (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) != 0) {
            moveMonth(12 * direction);
        } else {
            step(direction);
        }
        return true;
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Select:
        if (mode_ == Mode::Years) {
            chooseYear(year_);
        } else if (mode_ == Mode::Months) {
            chooseMonth(month_);
        } else if (const int k = dayKey(year_, month_, day_); k >= firstKey() && k <= lastKey()) {
            emit activated(year_, month_, day_);
        }
        return true;
    case Qt::Key_Escape:
        if (mode_ == Mode::Days) {
            return false;
        }
        setMode(Mode::Days);
        return true;
    default:
        return false;
    }
}

int FormDatePickerModel::daysInMonth(int year, int month) const {
    // Day 0 of the next month is the last day of this one.
    const auto& calendar = Calendar::current();
    const auto last = unwrap(calendar.date(dayComponents(year, month + 1, 0)));
    return static_cast<int>(calendar.dateComponents(kDay, last).day.value_or(0));
}

void FormDatePickerModel::moveTo(int year, int month, int day) {
    const int index = year * 12 + (month - 1);
    int y = floorDiv(index, 12);
    int m = index - y * 12 + 1;
    int d = std::clamp(day, 1, daysInMonth(y, m));
    const int key = std::clamp(dayKey(y, m, d), firstKey(), std::max(firstKey(), lastKey()));
    y = key / 10000;
    m = key / 100 % 100;
    d = key % 100;
    const bool monthMoved = y != year_ || m != month_;
    year_ = y;
    month_ = m;
    day_ = d;
    if (monthMoved) {
        rebuild();
    }
    emit changed();
}

void FormDatePickerModel::rebuild() {
    // Months out of 1...12 (from outside) are brought into range first.
    if (month_ < 1 || month_ > 12) {
        const int index = year_ * 12 + (month_ - 1);
        year_ = floorDiv(index, 12);
        month_ = index - year_ * 12 + 1;
    }
    const auto& calendar = Calendar::current();
    const Date first = unwrap(calendar.date(dayComponents(year_, month_, 1)));
    monthTitle_ = QString::fromStdString(calendar.formatSkeleton(first, "yMMMM"));
    yearTitle_ = QString::fromStdString(calendar.formatSkeleton(first, "y"));

    const int firstWeekday = calendar.firstWeekday();
    const int weekdayOfFirst =
        static_cast<int>(calendar.dateComponents(kWeekday, first).weekday.value_or(1));
    const int lead = (weekdayOfFirst - firstWeekday + 7) % 7;

    weekdaySymbols_.clear();
    for (int i = 0; i < 7; ++i) {
        // The first day of the grid's first week and the six after it.
        const Date day = unwrap(calendar.date(dayComponents(year_, month_, 1 - lead + i)));
        weekdaySymbols_ << QString::fromStdString(calendar.formatSkeleton(day, "EEEEEE"));
    }

    const int days = daysInMonth(year_, month_);
    cells_.clear();
    for (int i = 0; i < lead; ++i) {
        cells_ << 0;
    }
    for (int d = 1; d <= days; ++d) {
        cells_ << d;
    }
    while (cells_.size() % 7 != 0) {
        cells_ << 0;
    }
    emit monthChanged();
}

} // namespace tidemark
