#pragma once

#include "widgets/devicedialog.h"

#include <string>
#include <vector>

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

private slots:
    void delRecordBtnClickAct();
    void readRecordBtnClickAct();
    void exportRecordBtnClickAct();
    void getRecordFilesBtnClickAct();
    void clearRecordBtnClickAct();

private:
    /// Records as the terminal delivers them, one behind the other.
    struct RecordPage
    {
        std::vector<uint8_t> bytes;
        uint32_t count = 0;
    };

    QLayout *createDateRow();
    QLayout *createButtonGrid();

    bool fetchPage(const QDate &month, uint32_t firstIndex, RecordPage *page);
    /// Tries without end while the connection stands; false when it is gone. Afterwards nothing is
    /// under way any more.
    bool fetchPageAtLast(const QDate &month, uint32_t firstIndex, RecordPage *page);
    /// The lines of a page's records from the one at `from` on; the page begins with the month's
    /// record `firstIndex`.
    static std::string recordLines(const RecordPage &page, uint32_t from, uint32_t firstIndex);
    /// False when the connection is gone or the file cannot be written.
    bool exportPages(const QDate &month, QSaveFile *file, uint32_t *lastCount);

    QDateEdit *dateEdit;
};
