// The month page of the form's date picker: the days of one month laid out in weeks from the
// calendar's first weekday, the month's title and the weekday header in the user's locale. Which
// day is chosen, and which may be chosen, is the picker's own business; this only lays out.
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>

namespace tidemark {

class FormDatePickerModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(int year READ year WRITE setYear NOTIFY monthChanged)
    Q_PROPERTY(int month READ month WRITE setMonth NOTIFY monthChanged)
    /// "March 2026", "2026年3月".
    Q_PROPERTY(QString title READ title NOTIFY monthChanged)
    /// Seven short weekday names from the first weekday on.
    Q_PROPERTY(QStringList weekdaySymbols READ weekdaySymbols NOTIFY monthChanged)
    /// Day numbers of the grid, week by week; 0 for a cell outside the month. Only the weeks the
    /// month touches are listed.
    Q_PROPERTY(QVariantList cells READ cells NOTIFY monthChanged)
public:
    explicit FormDatePickerModel(QObject* parent = nullptr);

    int year() const { return year_; }
    void setYear(int year);
    int month() const { return month_; }
    void setMonth(int month);
    QString title() const { return title_; }
    QStringList weekdaySymbols() const { return weekdaySymbols_; }
    QVariantList cells() const { return cells_; }

    /// Moves the month on show by `months`.
    Q_INVOKABLE void moveMonth(int months);
    /// Days in a month of the current calendar.
    Q_INVOKABLE int daysInMonth(int year, int month) const;

signals:
    void monthChanged();

private:
    void rebuild();

    int year_ = 0;
    int month_ = 0;
    QString title_;
    QStringList weekdaySymbols_;
    QVariantList cells_;
};

} // namespace tidemark
