// The pages of the form's date picker and the way between them: the days of one month laid out
// in weeks from the calendar's first weekday, the twelve months of a year, and the years in pages
// of twenty, with the titles and names in the user's locale. A cursor day says what is on show
// (its month, its year, its page of years) and what the keyboard moves; which day is chosen is
// the picker's own business. Every step stays within the range, 1900-01-01 to 3000-12-31 on a
// side the picker leaves open.
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class FormDatePickerModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
public:
    enum class Mode { Days, Months, Years };
    Q_ENUM(Mode)

private:
    /// The cursor: its month is on show in the day grid.
    Q_PROPERTY(int year READ year WRITE setYear NOTIFY monthChanged)
    Q_PROPERTY(int month READ month WRITE setMonth NOTIFY monthChanged)
    Q_PROPERTY(int day READ day NOTIFY changed)
    Q_PROPERTY(Mode mode READ mode WRITE setMode NOTIFY changed)
    /// The range as yyyymmdd; 0 leaves that side open.
    Q_PROPERTY(int minimumKey READ minimumKey WRITE setMinimumKey NOTIFY changed)
    Q_PROPERTY(int maximumKey READ maximumKey WRITE setMaximumKey NOTIFY changed)
    /// The range with the open sides filled in: no day, month or year outside it can be chosen.
    Q_PROPERTY(int firstKey READ firstKey NOTIFY changed)
    Q_PROPERTY(int lastKey READ lastKey NOTIFY changed)
    /// "March 2026" on the days, "2026" on the months, "2020 – 2039" on the years.
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// Seven short weekday names from the first weekday on.
    Q_PROPERTY(QStringList weekdaySymbols READ weekdaySymbols NOTIFY monthChanged)
    /// Day numbers of the grid, week by week; 0 for a cell outside the month. Only the weeks the
    /// month touches are listed.
    Q_PROPERTY(QVariantList cells READ cells NOTIFY monthChanged)
    /// Twelve short month names.
    Q_PROPERTY(QStringList monthSymbols READ monthSymbols CONSTANT)
    /// The twenty years of the page that holds the cursor.
    Q_PROPERTY(QVariantList years READ years NOTIFY changed)
    /// Whether the arrows lead anywhere within the range.
    Q_PROPERTY(bool canStepBack READ canStepBack NOTIFY changed)
    Q_PROPERTY(bool canStepForward READ canStepForward NOTIFY changed)

public:
    static constexpr int kYearsPerPage = 20;

    explicit FormDatePickerModel(QObject* parent = nullptr);

    int year() const { return year_; }
    void setYear(int year);
    int month() const { return month_; }
    void setMonth(int month);
    int day() const { return day_; }
    Mode mode() const { return mode_; }
    void setMode(Mode mode);
    int minimumKey() const { return minimumKey_; }
    void setMinimumKey(int key);
    int maximumKey() const { return maximumKey_; }
    void setMaximumKey(int key);
    int firstKey() const;
    int lastKey() const;
    QString title() const;
    QStringList weekdaySymbols() const { return weekdaySymbols_; }
    QVariantList cells() const { return cells_; }
    QStringList monthSymbols() const { return monthSymbols_; }
    QVariantList years() const;
    bool canStepBack() const { return canStep(-1); }
    bool canStepForward() const { return canStep(1); }

    /// Puts the cursor on a day from outside (the chosen one) and shows its month; the day may
    /// lie outside the range.
    Q_INVOKABLE void show(int year, int month, int day);
    /// The arrows: a month, a year or a page of years back or forth, by the mode.
    Q_INVOKABLE void step(int direction);
    /// Moves the cursor by `months`, keeping its day where the month has it.
    Q_INVOKABLE void moveMonth(int months);
    /// Moves the cursor by `days`.
    Q_INVOKABLE void moveDays(int days);
    /// A tap on a year: its months come on show.
    Q_INVOKABLE void chooseYear(int year);
    /// A tap on a month: its days come on show.
    Q_INVOKABLE void chooseMonth(int month);
    /// A tap on the title: from the days or the months to the years, from the years back.
    Q_INVOKABLE void toggleYears();
    /// A key press (Qt::Key and Qt::KeyboardModifiers): arrows move the cursor by a cell or a
    /// row, PageUp and PageDown by a month (with Shift or Ctrl by a year), Enter opens the
    /// cursor's year or month or, on the days, sends `activated`; Escape goes back to the days.
    /// True when the key was used.
    Q_INVOKABLE bool handleKey(int key, int modifiers);
    /// Days in a month of the current calendar.
    Q_INVOKABLE int daysInMonth(int year, int month) const;

signals:
    void monthChanged();
    void changed();
    /// Enter on a day of the range.
    void activated(int year, int month, int day);

private:
    bool canStep(int direction) const;
    /// Moves the cursor to the day, brought into the month and then into the range.
    void moveTo(int year, int month, int day);
    void rebuild();

    int year_ = 0;
    int month_ = 0;
    int day_ = 1;
    Mode mode_ = Mode::Days;
    int minimumKey_ = 0;
    int maximumKey_ = 0;
    QString monthTitle_;
    QString yearTitle_;
    QStringList weekdaySymbols_;
    QStringList monthSymbols_;
    QVariantList cells_;
};

} // namespace tidemark
