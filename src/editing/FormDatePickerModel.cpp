#include "editing/FormDatePickerModel.h"

#include "base/Fatal.h"
#include "calendar/Calendar.h"
#include "engine/Occurrences.h"

#include <optional>

namespace tidemark {

FormDatePickerModel::FormDatePickerModel(QObject* parent) : QObject(parent) {
    const auto today = Calendar::current().dateComponents(kYear | kMonth, now());
    year_ = static_cast<int>(today.year.value_or(2000));
    month_ = static_cast<int>(today.month.value_or(1));
    rebuild();
}

void FormDatePickerModel::setYear(int year) {
    if (year_ != year) {
        year_ = year;
        rebuild();
    }
}

void FormDatePickerModel::setMonth(int month) {
    if (month_ != month) {
        month_ = month;
        rebuild();
    }
}

void FormDatePickerModel::moveMonth(int months) {
    const int index = year_ * 12 + (month_ - 1) + months;
    year_ = index / 12;
    month_ = index % 12 + 1;
    rebuild();
}

int FormDatePickerModel::daysInMonth(int year, int month) const {
    // Day 0 of the next month is the last day of this one.
    const auto& calendar = Calendar::current();
    const auto last = unwrap(calendar.date(dayComponents(year, month + 1, 0)));
    return static_cast<int>(calendar.dateComponents(kDay, last).day.value_or(0));
}

void FormDatePickerModel::rebuild() {
    // Months out of 1...12 (from a binding) are brought into range first.
    if (month_ < 1 || month_ > 12) {
        const int index = year_ * 12 + (month_ - 1);
        year_ = index >= 0 ? index / 12 : (index - 11) / 12;
        month_ = index - year_ * 12 + 1;
    }
    const auto& calendar = Calendar::current();
    const Date first = unwrap(calendar.date(dayComponents(year_, month_, 1)));
    title_ = QString::fromStdString(calendar.formatSkeleton(first, "yMMMM"));

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
