#pragma once

#include "data/records.h"
#include "widgets/devicedialog.h"

#include <set>
#include <string>

class QDate;
class QDateEdit;
class QSaveFile;

/// "Access Record Management": shows, exports and removes the access records that the terminal
/// keeps, a month at a time.
class AccessRecordDlg : public DeviceDialog
{
    Q_OBJECT

public:
    AccessRecordDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

    /// Lets a date edit choose a month from three years before today to one year after.
    static void prepareMonthEdit(QDateEdit *edit, const QDate &today);

    /// Esc and closing; during an export they end it, once a page has to be asked for again.
    void reject() override;

private slots:
    void delRecordBtnClickAct();
    void readRecordBtnClickAct();
    void exportRecordBtnClickAct();
    void getRecordFilesBtnClickAct();
    void clearRecordBtnClickAct();

private:
    QLayout *createDateRow();
    QLayout *createButtonGrid();

    /// Asks until the page has come. Returns false when the connection is gone, the operator ends
    /// the export, or the terminal sends pages of this export again three times in a row.
    bool fetchNextPage(const QDate &month, uint32_t firstIndex, RecordPage *page);
    /// The lines of a page's records from the one at `from` on; the page begins with the month's
    /// record `firstIndex`.
    static std::string recordLines(const RecordPage &page, uint32_t from, uint32_t firstIndex);
    /// Returns false when a page cannot be had or the file cannot be written.
    bool exportPages(const QDate &month, QSaveFile *file, uint32_t *lastCount);
    bool exportMonth(const QDate &month, const QString &path, uint32_t *lastCount);
    void setExporting(bool started);

    bool cancelled = false; ///< by the operator, during an export
    bool exporting = false;
    std::set<size_t> pageHashes;    ///< of the pages of this export
    int pageRounds = TimeOutRounds; ///< how long a page is waited for, in milliseconds
    QDateEdit *dateEdit;
};
