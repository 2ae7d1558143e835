#pragma once

#include "data/records.h"
#include "widgets/devicedialog.h"

#include <set>
#include <string>

class QDate;
class QDateEdit;
class QSaveFile;

/// "Access Record Management": shows, exports and removes the terminal's access records month by
/// month.
class AccessRecordDlg : public DeviceDialog
{
    Q_OBJECT

public:
    AccessRecordDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

    /// Makes a date edit accept the months from three years before today to one year after.
    static void prepareMonthEdit(QDateEdit *edit, const QDate &today);

    /// Runs on Esc and on closing. During an export it ends the export instead, as soon as a page
    /// would have to be requested again.
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

    /// Requests a page until it arrives. Returns false when the connection is lost, the operator
    /// ends the export, or the terminal sends earlier pages again three times in a row.
    bool fetchNextPage(const QDate &month, uint32_t firstIndex, RecordPage *page);
    /// Returns the lines of a page's records from position `from` on. `firstIndex` is the number of
    /// the page's first record in the month.
    static std::string recordLines(const RecordPage &page, uint32_t from, uint32_t firstIndex);
    /// Returns false when a page cannot be fetched or the file cannot be written.
    bool exportPages(const QDate &month, QSaveFile *file, uint32_t *lastCount);
    bool exportMonth(const QDate &month, const QString &path, uint32_t *lastCount);
    void setExporting(bool started);

    bool cancelled = false; ///< by the operator, during an export
    bool exporting = false;
    std::set<size_t> pageHashes;    ///< of the pages of this export
    int pageRounds = TimeOutRounds; ///< timeout of a page, in milliseconds
    QDateEdit *dateEdit;
};
