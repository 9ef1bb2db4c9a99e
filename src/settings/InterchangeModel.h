// The settings' calendar-file pages and the headless --export-ics / --import-ics: the date book
// written to an iCalendar file, and calendar or contact files read into it after a preview.
#pragma once

#include "interchange/CalendarImport.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class InterchangeModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString exportPath READ exportPath WRITE setExportPath NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(QString importPath READ importPath NOTIFY changed)
    Q_PROPERTY(bool hasPreview READ hasPreview NOTIFY changed)
    Q_PROPERTY(QString previewSummary READ previewSummary NOTIFY changed)
    Q_PROPERTY(int addCount READ addCount NOTIFY changed)
    /// Maps with "title" and "detail", one per event to add; then the items left out.
    Q_PROPERTY(QVariantList toAdd READ toAdd NOTIFY changed)
    Q_PROPERTY(QVariantList leftOut READ leftOut NOTIFY changed)

public:
    explicit InterchangeModel(QObject* parent = nullptr);

    QString exportPath() const { return exportPath_; }
    void setExportPath(const QString& path);
    QString status() const { return status_; }
    QString importPath() const { return importPath_; }
    bool hasPreview() const { return !plan_.events.empty() || !plan_.skipped.empty(); }
    QString previewSummary() const;
    int addCount() const { return static_cast<int>(plan_.events.size()); }
    QVariantList toAdd() const;
    QVariantList leftOut() const;

    /// A file URL from a file dialog, or a plain path, as a path.
    Q_INVOKABLE static QString pathOf(const QUrl& url);
    /// Writes the date book to `exportPath`; the outcome is in `status`.
    Q_INVOKABLE bool exportNow();
    /// Reads a file and shows what it would add; nothing is added yet.
    Q_INVOKABLE void preview(const QString& path);
    /// Adds what the preview shows.
    Q_INVOKABLE void addPreviewed();
    Q_INVOKABLE void clearPreview();

signals:
    void changed();

private:
    QString exportPath_;
    QString status_;
    QString importPath_;
    ImportPlan plan_;
};

/// The import's display texts in the user's language.
ImportTexts importTexts();
/// "repeats", "birthday", ... and "already in the date book", ... in the user's language.
QString importKindText(ImportedEvent::Kind kind);
QString skipReasonText(SkippedItem::Reason reason);
/// The preview's one-line summary.
QString importSummaryText(const ImportPlan& plan);

/// Reads a file into an import plan against the stored events (an unreadable file is the plan's
/// error).
ImportPlan planImportOfFile(const QString& path);
/// Adds the planned events through the store's one way in, then plans the reminders anew.
void applyImportPlan(const ImportPlan& plan);

/// --export-ics FILE ("-" for standard output) and --import-ics FILE [--yes], without a window.
int runHeadlessExport(const QString& path);
int runHeadlessImport(const QString& path, bool assumeYes);

} // namespace tidemark
