#include "records/realmDataFunc.h"

#include "base/Fatal.h"
#include "base/Localize.h"
#include "cloud/addEditAndDelDataAtCloud.h"
#include "records/DeviceOwnerAuthenticator.h"
#include "widgets/widgetFunc.h"

#include <tuple>

namespace tidemark {

namespace {

/// Takes the value for the field being edited from the argument of its type.
template <class T>
T editedValue(const std::optional<std::string>& s, const std::optional<std::int64_t>& i,
              const std::optional<bool>& b, const std::optional<Bytes>& d) {
    if constexpr (std::is_same_v<T, std::string>) {
        return unwrap(s);
    } else if constexpr (std::is_same_v<T, std::int64_t>) {
        return unwrap(i);
    } else if constexpr (std::is_same_v<T, bool>) {
        return unwrap(b);
    } else {
        return unwrap(d);
    }
}

} // namespace

void realmDataFunc::addBgTaskInfoMemo() {
    auto store = Store::open();
    memoDataForNotiObject memo;
    memo.memoId = newUUIDString();
    memo.eventId = newUUIDString();
    memo.title = "bgTaskInfo";
    memo.content = "";
    memo.timeStamp = Calendar::current().format(now(), "yyyy-MM-dd / HH:mm:ss");
    store.write([&] { store.add(memo); });
}

void realmDataFunc::addEventData(const eventObject& eventData) {
    auto store = Store::open();
    const auto record = eventAs<eventInfo>(eventData);
    store.write([&] { store.add(record); });
    if (cloudkitFuncStatus.get()) {
        addEditAndDelDataAtCloud().saveEventRecordAtCloud(record);
    }
    widgetFunc().publishEventDataToWidget();
}

void realmDataFunc::addEventsData(const std::vector<eventObject>& events) {
    if (events.empty()) {
        return;
    }
    auto store = Store::open();
    std::vector<eventInfo> records;
    records.reserve(events.size());
    for (const auto& event : events) {
        records.push_back(eventAs<eventInfo>(event));
    }
    store.write([&] {
        for (const auto& record : records) {
            store.add(record);
        }
    });
    if (cloudkitFuncStatus.get()) {
        addEditAndDelDataAtCloud cloud;
        for (const auto& record : records) {
            cloud.saveEventRecordAtCloud(record);
        }
    }
    widgetFunc().publishEventDataToWidget();
}

void realmDataFunc::deleteEventData(const std::string& eventId) {
    auto store = Store::open();
    unwrap(store.object<eventInfo>(eventId));
    store.write([&] { store.remove<eventInfo>(eventId); });
    if (cloudkitFuncStatus.get()) {
        addEditAndDelDataAtCloud().deleteEventRecordAtCloud(eventId);
    }
    widgetFunc().publishEventDataToWidget();
}

void realmDataFunc::editEventData(const eventInfo& eventData, const std::string& key,
                                  std::optional<std::string> stringValue,
                                  std::optional<std::int64_t> intValue,
                                  std::optional<bool> boolValue, std::optional<Bytes> dataValue) {
    auto store = Store::open();
    if (store.object<eventInfo>(eventData.eventId)) {
        eventInfo record;
        record.eventId = eventData.eventId;
        std::apply(
            [&](auto first, auto... rest) {
                (void)first; // the identifier is always copied, whatever the key
                (
                    [&](auto f) {
                        using T = typename decltype(f)::value_type;
                        record.*(f.member) = f.name == key ? editedValue<T>(stringValue, intValue,
                                                                            boolValue, dataValue)
                                                           : eventData.*(f.member);
                    }(rest),
                    ...);
            },
            eventInfo::fields());
        store.write([&] { store.add(record); });
        if (cloudkitFuncStatus.get()) {
            addEditAndDelDataAtCloud().saveEventRecordAtCloud(record);
        }
    }
    widgetFunc().publishEventDataToWidget();
}

void realmDataFunc::addMemoData(const std::string& eventId, const std::string& memoId,
                                const std::string& title, const std::string& content, Date date) {
    auto store = Store::open();
    memoDataForNotiObject memo;
    memo.eventId = eventId;
    memo.memoId = memoId;
    memo.title = title;
    memo.content = content;
    memo.timeStamp = Calendar::current().format(date, "yyyy-MM-dd / HH:mm");
    store.write([&] { store.add(memo); });
    if (cloudkitFuncStatus.get()) {
        addEditAndDelDataAtCloud().saveMemoRecordAtCloud(memo);
    }
}

void realmDataFunc::deleteMemoData(const std::string& memoId) {
    auto store = Store::open();
    if (!store.object<memoDataForNotiObject>(memoId)) {
        return;
    }
    store.write([&] { store.remove<memoDataForNotiObject>(memoId); });
    if (cloudkitFuncStatus.get()) {
        addEditAndDelDataAtCloud().deleteMemoRecordAtCloud(memoId);
    }
}

void extensionDataFunc::addDateData(const DateComponents& dateComponents) {
    const auto& calendar = Calendar::current();
    const Date date = calendar.date(dateComponents).value_or(now());
    appFuncForDateData row;
    row.dataId = newUUIDString();
    row.dateString = calendar.format(date, "yyyyMMdd");
    row.dateInfoYear = dateComponents.year.value_or(0);
    row.dateInfoMonth = dateComponents.month.value_or(0);
    row.dateInfoDay = dateComponents.day.value_or(0);
    auto store = Store::open();
    store.write([&] { store.add(row); });
}

void extensionDataFunc::unlockAppWithDeviceOwner() {
    auto& authenticator = deviceOwnerAuthenticator();
    if (!authenticator.canEvaluate()) {
        return;
    }
    // The reply may come on any thread and after this object is gone: it declares its own field.
    authenticator.evaluate(localized("lockAndUnlockAppByFaceIDReasonStringAtFunc"),
                           [](bool success) {
                               if (success) {
                                   extensionDataFunc().appLockStatu.set(false);
                               }
                           });
}

void extensionDataFunc::removeDateData(Date date) {
    const auto& calendar = Calendar::current();
    const auto parts = calendar.dateComponents(kYear | kMonth | kDay, date);
    DateComponents day;
    day.year = parts.year;
    day.month = parts.month;
    day.day = parts.day;
    const std::string dateString = calendar.format(unwrap(calendar.date(day)), "yyyyMMdd");
    const auto rows = dateDatas.filter("dateString", Predicate::Op::Equal, dateString).snapshot();
    for (const auto& row : rows) {
        auto store = Store::open();
        unwrap(store.object<appFuncForDateData>(row.dataId));
        store.write([&] { store.remove<appFuncForDateData>(row.dataId); });
    }
}

void rebuildDayRows(std::int64_t range) {
    {
        auto store = Store::open();
        store.write([&] { store.removeAll<appFuncForDateData>(); });
    }
    int days = 0;
    switch (range) {
    case 0:
        days = 7;
        break;
    case 1:
        days = 30;
        break;
    case 2:
        days = 365;
        break;
    default:
        return;
    }
    const auto today = Calendar::current().dateComponents(kYear | kMonth | kDay, now());
    extensionDataFunc rows;
    for (int i = 0; i < days; ++i) {
        DateComponents c;
        c.year = today.year;
        c.month = today.month;
        c.day = checkedAdd(today.day.value_or(0), i);
        rows.addDateData(c);
    }
}

} // namespace tidemark
