#include "editing/MemoModels.h"

#include "base/Fatal.h"
#include "engine/Occurrences.h"
#include "platform/linux/QtDispatcher.h"
#include "records/realmDataFunc.h"

#include <QRegularExpression>
#include <QUuid>
#include <algorithm>

namespace tidemark {

namespace {

constexpr std::string_view kMemoStampPattern = "yyyy-MM-dd / HH:mm";

/// The moment at the start of the minute of `date`.
Date toMinute(Date date) {
    const auto& calendar = Calendar::current();
    const auto p = calendar.dateComponents(kYear | kMonth | kDay | kHour | kMinute, date);
    return unwrap(calendar.date(momentComponents(*p.year, *p.month, *p.day, *p.hour, *p.minute)));
}

} // namespace

std::optional<Date> memoStampDate(const std::string& timeStamp) {
    static const QRegularExpression shape(
        QStringLiteral(R"(^(\d{4})-(\d{2})-(\d{2}) / (\d{2}):(\d{2})$)"));
    const auto match = shape.match(QString::fromStdString(timeStamp));
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    auto number = [&](int i) { return static_cast<std::int64_t>(match.captured(i).toInt()); };
    return Calendar::current().date(
        momentComponents(number(1), number(2), number(3), number(4), number(5)));
}

// ---- MemoListModel ------------------------------------------------------------------------

MemoListModel::MemoListModel(QObject* parent) : QAbstractListModel(parent) {
    memoObservation_ = memoData_.observe([this] { rebuild(); }, queuedOn(this));
    orderObservation_ = ascendingForList_.observe(
        [this] {
            emit ascendingForListChanged();
            rebuild();
        },
        queuedOn(this));
}

void MemoListModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    emit eventIdChanged();
    rebuild();
}

QStringList MemoListModel::memoIds() const {
    QStringList ids;
    for (const auto& row : rows_) {
        ids << QString::fromStdString(row.item.memoId);
    }
    return ids;
}

int MemoListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant MemoListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() < 0 || index.row() >= count()) {
        return {};
    }
    const auto& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case ItemIdRole:
        return QString::fromStdString(row.item.id);
    case MemoIdRole:
        return QString::fromStdString(row.item.memoId);
    case TitleRole:
        return QString::fromStdString(row.memo.title);
    case ContentRole:
        return QString::fromStdString(row.memo.content);
    case DateTextRole:
        return QString::fromStdString(row.memo.timeStamp);
    default:
        return {};
    }
}

QHash<int, QByteArray> MemoListModel::roleNames() const {
    return {{ItemIdRole, "itemId"},
            {MemoIdRole, "memoId"},
            {TitleRole, "title"},
            {ContentRole, "content"},
            {DateTextRole, "dateText"}};
}

void MemoListModel::rebuild() {
    std::vector<Row> rows;
    if (!eventId_.isEmpty()) {
        computeFunc compute;
        for (auto& item : compute.memoItemsForEvent(eventId_.toStdString())) {
            auto memo = compute.memoForId(item.memoId);
            rows.push_back({std::move(item), std::move(memo)});
        }
    }
    // Nothing to redraw when the memos and their order are as shown (after a delete that the
    // list already took out, for one): the fresh card ids alone would make every card blink.
    const bool same = std::equal(rows.begin(), rows.end(), rows_.begin(), rows_.end(),
                                 [](const Row& a, const Row& b) { return a.memo == b.memo; });
    if (same) {
        return;
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    emit countChanged();
}

void MemoListModel::toggleOrder() {
    ascendingForList_.set(!ascendingForList_.get());
    emit ascendingForListChanged();
    rebuild();
}

void MemoListModel::deleteMemo(const QString& memoId) {
    const auto id = memoId.toStdString();
    const auto it =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& r) { return r.item.memoId == id; });
    if (it != rows_.end()) {
        const int row = static_cast<int>(it - rows_.begin());
        beginRemoveRows({}, row, row);
        rows_.erase(it);
        endRemoveRows();
        emit countChanged();
    }
    realmDataFunc().deleteMemoData(id);
}

// ---- MemoEditorModel ----------------------------------------------------------------------

MemoEditorModel::MemoEditorModel(QObject* parent) : QObject(parent), date_(toMinute(now())) {}

void MemoEditorModel::setEventId(const QString& eventId) {
    if (eventId != eventId_) {
        eventId_ = eventId;
        emit changed();
    }
}

void MemoEditorModel::setTitleForEventMemo(const QString& title) {
    if (title != title_) {
        title_ = title;
        emit changed();
    }
}

void MemoEditorModel::setContentForEventMemo(const QString& content) {
    if (content != content_) {
        content_ = content;
        emit changed();
    }
}

DateComponents MemoEditorModel::parts() const {
    return Calendar::current().dateComponents(kYear | kMonth | kDay | kHour | kMinute, date_);
}

int MemoEditorModel::year() const {
    return static_cast<int>(parts().year.value_or(0));
}
int MemoEditorModel::month() const {
    return static_cast<int>(parts().month.value_or(0));
}
int MemoEditorModel::day() const {
    return static_cast<int>(parts().day.value_or(0));
}
int MemoEditorModel::hour() const {
    return static_cast<int>(parts().hour.value_or(0));
}
int MemoEditorModel::minute() const {
    return static_cast<int>(parts().minute.value_or(0));
}

QString MemoEditorModel::dateText() const {
    return QString::fromStdString(Calendar::current().format(date_, kMemoStampPattern));
}

bool MemoEditorModel::canSave() const {
    if (title_.isEmpty() || eventId_.isEmpty()) {
        return false;
    }
    if (editMode_ && title_ == titleBeforeEdit_ && content_ == contentBeforeEdit_ &&
        date_ == dateBeforeEdit_) {
        return false;
    }
    return true;
}

void MemoEditorModel::startAdd() {
    editMode_ = false;
    memoId_.clear();
    title_.clear();
    content_.clear();
    date_ = toMinute(now());
    titleBeforeEdit_ = title_;
    contentBeforeEdit_ = content_;
    dateBeforeEdit_ = date_;
    emit changed();
}

bool MemoEditorModel::startEdit(const QString& memoId) {
    auto memo = Store::open().object<memoDataForNotiObject>(memoId.toStdString());
    if (!memo) {
        return false;
    }
    editMode_ = true;
    memoId_ = memoId;
    eventId_ = QString::fromStdString(memo->eventId);
    title_ = QString::fromStdString(memo->title);
    content_ = QString::fromStdString(memo->content);
    // A stamp of another shape (written elsewhere) opens at the current minute.
    date_ = memoStampDate(memo->timeStamp).value_or(toMinute(now()));
    titleBeforeEdit_ = title_;
    contentBeforeEdit_ = content_;
    dateBeforeEdit_ = date_;
    emit changed();
    return true;
}

void MemoEditorModel::setDate(int year, int month, int day, int hour, int minute) {
    if (auto date = Calendar::current().date(momentComponents(year, month, day, hour, minute))) {
        if (*date != date_) {
            date_ = *date;
            emit changed();
        }
    }
}

int MemoEditorModel::daysInMonth(int year, int month) const {
    return static_cast<int>(lastDayOfMonth(year, month, Calendar::current()));
}

bool MemoEditorModel::save() {
    if (!canSave()) {
        return false;
    }
    if (!editMode_) {
        memoId_ = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    }
    realmDataFunc().addMemoData(eventId_.toStdString(), memoId_.toStdString(), title_.toStdString(),
                                content_.toStdString(), date_);
    // What was saved is the new reference: saving the same values again is blocked.
    editMode_ = true;
    titleBeforeEdit_ = title_;
    contentBeforeEdit_ = content_;
    dateBeforeEdit_ = date_;
    emit changed();
    return true;
}

} // namespace tidemark
