#include "settings/InterchangeModel.h"

#include "cloud/CloudService.h"
#include "interchange/CalendarExport.h"
#include "notifications/notiFunc.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QVariantMap>
#include <atomic>
#include <cstdio>
#include <iostream>
#include <string>

namespace tidemark {

namespace {

QString text(const char* id) {
    return qtTrId(id);
}

struct ExportOutcome {
    bool ok = false;
    CalendarExportSummary summary;
    QString error;
};

ExportOutcome exportTo(const QString& path) {
    ExportOutcome outcome;
    const Store store = Store::open();
    const CalendarExport file =
        exportCalendar(store.objects<eventInfo>(), store.objects<memoDataForNotiObject>(), now(),
                       Calendar::current());
    outcome.summary = file.summary;
    if (path == QStringLiteral("-")) {
        std::fwrite(file.text.data(), 1, file.text.size(), stdout);
        outcome.ok = std::fflush(stdout) == 0;
        return outcome;
    }
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        out.write(file.text.data(), static_cast<qint64>(file.text.size())) !=
            static_cast<qint64>(file.text.size())) {
        outcome.error = out.errorString();
        return outcome;
    }
    outcome.ok = true;
    return outcome;
}

QString exportDoneText(const CalendarExportSummary& s, const QString& path) {
    return text("exportDone")
        .arg(s.events)
        .arg(path)
        .arg(s.asRule)
        .arg(s.singleDates)
        .arg(s.asDates);
}

QString dateText(const EventFields& e) {
    DateComponents c;
    c.year = e.eventStartDateYear;
    c.month = e.eventStartDateMonth;
    c.day = e.eventStartDateDay;
    const auto date = Calendar::current().date(c);
    return date ? QString::fromStdString(Calendar::current().formatAbbreviated(*date)) : QString();
}

/// The installed cloud service with a count of the calls whose answer hasn't come yet, so that a
/// run without a window can wait for the transfers that the store's changes start.
class CountingCloudService : public CloudService {
public:
    explicit CountingCloudService(std::shared_ptr<CloudService> inner) : inner_(std::move(inner)) {}

    int inFlight() const { return *inFlight_; }

    void accountStatus(
        std::function<void(CloudAccountStatus, std::optional<CloudError>)> done) override {
        inner_->accountStatus(counted(std::move(done)));
    }
    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        inner_->fetchUserRecordId(counted(std::move(done)));
    }
    void fetchZone(
        const std::string& zoneName,
        std::function<void(std::optional<std::string>, std::optional<CloudError>)> done) override {
        inner_->fetchZone(zoneName, counted(std::move(done)));
    }
    void saveZone(const std::string& zoneName,
                  std::function<void(std::optional<CloudError>)> done) override {
        inner_->saveZone(zoneName, counted(std::move(done)));
    }
    void fetchRecord(
        const CloudRecordId& id,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)> done) override {
        inner_->fetchRecord(id, counted(std::move(done)));
    }
    void saveRecord(const CloudRecord& record,
                    std::function<void(std::optional<CloudError>)> done) override {
        inner_->saveRecord(record, counted(std::move(done)));
    }
    void modifyRecords(std::vector<CloudRecord> toSave, std::vector<CloudRecordId> toDelete,
                       std::function<void(std::optional<CloudError>)> done) override {
        inner_->modifyRecords(std::move(toSave), std::move(toDelete), counted(std::move(done)));
    }
    void queryRecords(const std::string& recordType, std::optional<CloudQueryCursor> cursor,
                      std::size_t limit,
                      std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                         std::optional<CloudError>)>
                          done) override {
        inner_->queryRecords(recordType, std::move(cursor), limit, counted(std::move(done)));
    }

private:
    /// The answer, counted out after it has run (a call made inside it is counted in first).
    template <class... Args>
    std::function<void(Args...)> counted(std::function<void(Args...)> done) {
        ++*inFlight_;
        return [count = inFlight_, done = std::move(done)](Args... args) {
            if (done) {
                done(std::move(args)...);
            }
            --*count;
        };
    }

    std::shared_ptr<CloudService> inner_;
    std::shared_ptr<std::atomic<int>> inFlight_ = std::make_shared<std::atomic<int>>(0);
};

} // namespace

ImportTexts importTexts() {
    ImportTexts texts;
    texts.birthdayTitle = text("importBirthdayTitle").toStdString();
    texts.anniversaryTitle = text("importAnniversaryTitle").toStdString();
    texts.firstDateNote = text("importFirstDateNote").toStdString();
    texts.datesRule = text("importDatesRule").toStdString();
    return texts;
}

QString importKindText(ImportedEvent::Kind kind) {
    switch (kind) {
    case ImportedEvent::Kind::rule:
        return text("importKindRule");
    case ImportedEvent::Kind::singleDate:
        return text("importKindSingle");
    case ImportedEvent::Kind::firstDateOnly:
        return text("importKindFirstDate");
    case ImportedEvent::Kind::birthday:
        return text("importKindBirthday");
    case ImportedEvent::Kind::anniversary:
        return text("importKindAnniversary");
    }
    return {};
}

QString skipReasonText(SkippedItem::Reason reason) {
    switch (reason) {
    case SkippedItem::Reason::alreadyThere:
        return text("importSkipAlreadyThere");
    case SkippedItem::Reason::notAnEvent:
        return text("importSkipNotAnEvent");
    case SkippedItem::Reason::changedOccurrence:
        return text("importSkipChangedOccurrence");
    case SkippedItem::Reason::cancelled:
        return text("importSkipCancelled");
    case SkippedItem::Reason::noDate:
        return text("importSkipNoDate");
    case SkippedItem::Reason::unreadableDate:
        return text("importSkipUnreadableDate");
    }
    return {};
}

QString importSummaryText(const ImportPlan& plan) {
    using Kind = ImportedEvent::Kind;
    return text("importSummary")
        .arg(plan.events.size())
        .arg(plan.count(Kind::rule))
        .arg(plan.count(Kind::singleDate))
        .arg(plan.count(Kind::firstDateOnly))
        .arg(plan.count(Kind::birthday) + plan.count(Kind::anniversary))
        .arg(plan.skipped.size());
}

ImportPlan planImportOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ImportPlan plan;
        plan.error = text("importUnreadableFile").arg(path).toStdString() + " " +
                     file.errorString().toStdString();
        return plan;
    }
    const QByteArray bytes = file.readAll();
    return planImport(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())),
                      Store::open().objects<eventInfo>(), importTexts(), now(),
                      Calendar::current());
}

void applyImportPlan(const ImportPlan& plan) {
    if (!plan.error.empty() || plan.events.empty()) {
        return;
    }
    std::vector<eventObject> events;
    events.reserve(plan.events.size());
    bool reminders = false;
    for (const ImportedEvent& item : plan.events) {
        events.push_back(item.event);
        reminders = reminders || item.event.eventNotiOrNot;
    }
    realmDataFunc().addEventsData(events);
    if (reminders) {
        notiFunc().replanAllNotiRequests();
    }
}

InterchangeModel::InterchangeModel(QObject* parent) : QObject(parent) {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty()) {
        folder = QDir::homePath();
    }
    exportPath_ = QDir(folder).filePath(QStringLiteral("tidemark.ics"));
}

void InterchangeModel::setExportPath(const QString& path) {
    if (path != exportPath_) {
        exportPath_ = path;
        emit changed();
    }
}

QString InterchangeModel::pathOf(const QUrl& url) {
    return url.isLocalFile() ? url.toLocalFile() : url.toString();
}

bool InterchangeModel::exportNow() {
    const ExportOutcome outcome = exportTo(exportPath_);
    status_ = outcome.ok ? exportDoneText(outcome.summary, exportPath_)
                         : text("exportFailed").arg(exportPath_, outcome.error);
    emit changed();
    return outcome.ok;
}

QString InterchangeModel::previewSummary() const {
    if (!plan_.error.empty()) {
        return text("importFailed").arg(QString::fromStdString(plan_.error));
    }
    return importSummaryText(plan_);
}

QVariantList InterchangeModel::toAdd() const {
    QVariantList rows;
    for (const ImportedEvent& item : plan_.events) {
        rows.append(
            QVariantMap{{QStringLiteral("title"), QString::fromStdString(item.event.eventTitle)},
                        {QStringLiteral("detail"), dateText(item.event) + QStringLiteral(" · ") +
                                                       importKindText(item.kind)}});
    }
    return rows;
}

QVariantList InterchangeModel::leftOut() const {
    QVariantList rows;
    for (const SkippedItem& item : plan_.skipped) {
        rows.append(QVariantMap{{QStringLiteral("title"), QString::fromStdString(item.name)},
                                {QStringLiteral("detail"), skipReasonText(item.reason)}});
    }
    return rows;
}

void InterchangeModel::preview(const QString& path) {
    importPath_ = path;
    plan_ = planImportOfFile(path);
    status_ = plan_.error.empty() ? QString() : previewSummary();
    emit changed();
}

void InterchangeModel::addPreviewed() {
    const std::size_t added = plan_.error.empty() ? plan_.events.size() : 0;
    applyImportPlan(plan_);
    plan_ = {};
    status_ = text("importDone").arg(added);
    emit changed();
}

void InterchangeModel::clearPreview() {
    plan_ = {};
    status_.clear();
    emit changed();
}

int runHeadlessExport(const QString& path) {
    const ExportOutcome outcome = exportTo(path);
    if (!outcome.ok) {
        std::fprintf(stderr, "%s\n", qPrintable(text("exportFailed").arg(path, outcome.error)));
        return 1;
    }
    // The report goes to standard error when the file itself goes to standard output.
    std::fprintf(path == QStringLiteral("-") ? stderr : stdout, "%s\n",
                 qPrintable(exportDoneText(outcome.summary, path)));
    return 0;
}

int runHeadlessImport(const QString& path, bool assumeYes) {
    const ImportPlan plan = planImportOfFile(path);
    if (!plan.error.empty()) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(text("importFailed").arg(QString::fromStdString(plan.error))));
        return 1;
    }
    std::printf("%s\n", qPrintable(importSummaryText(plan)));
    if (!plan.events.empty()) {
        std::printf("%s:\n", qPrintable(text("importToAddHeader")));
    }
    for (const ImportedEvent& item : plan.events) {
        std::printf("  %s  %s (%s)\n", qPrintable(dateText(item.event)),
                    item.event.eventTitle.c_str(), qPrintable(importKindText(item.kind)));
    }
    if (!plan.skipped.empty()) {
        std::printf("%s:\n", qPrintable(text("importSkippedHeader")));
    }
    for (const SkippedItem& item : plan.skipped) {
        std::printf("  %s: %s\n", item.name.c_str(), qPrintable(skipReasonText(item.reason)));
    }
    if (plan.events.empty()) {
        return 0;
    }
    if (!assumeYes) {
        std::printf("%s", qPrintable(text("importQuestion")));
        std::fflush(stdout);
        std::string answer;
        std::getline(std::cin, answer);
        if (answer != "y" && answer != "Y" && answer != "yes") {
            std::printf("%s\n", qPrintable(text("importDeclined")));
            return 0;
        }
    }
    // With sync on, the store's changes start transfers to the cloud; they are answered on the
    // event loop, which a run without a window has to keep going until they are (at most 2 min).
    const auto counting = std::make_shared<CountingCloudService>(sharedCloudService());
    setCloudService(counting);
    applyImportPlan(plan);
    QElapsedTimer waited;
    waited.start();
    while (counting->inFlight() > 0 && waited.elapsed() < 120'000) {
        QEventLoop().processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 100);
    }
    std::printf("%s\n", qPrintable(text("importDone").arg(plan.events.size())));
    return 0;
}

} // namespace tidemark
