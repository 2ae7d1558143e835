#include "dialogs/accessrecorddlg.h"

#include "data/records.h"
#include "data/wholefile.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"
#include "widgets/textlog.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>

namespace {

constexpr QSize DialogSize(370, 200);
constexpr QSize LabelSize(50, 27);
constexpr QSize DateSize(120, 27);
constexpr QSize ButtonSize(100, 27);
constexpr int ButtonColumns = 3;

constexpr int MonthsBack = 36;
constexpr int MonthsAhead = 12;
constexpr int ShortestMonth = 28; // days

constexpr int MaxPageRounds = 5000;
constexpr int MaxEqualPages = 3; // in a row
constexpr uint32_t MaxRecords = 10000000;

constexpr uint32_t MaxShown = 100;

bool isPrintableAscii(char byte)
{
    return byte >= ' ' && byte <= '~';
}

bool breaksLine(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

/// Appends UTF-8. Replaces invalid bytes and characters that would end the record's line.
void appendText(std::string *line, std::string_view bytes)
{
    if (std::all_of(bytes.begin(), bytes.end(), isPrintableAscii)) {
        line->append(bytes);
        return;
    }
    QString text = QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
    std::replace_if(text.begin(), text.end(), breaksLine, QChar(QChar::ReplacementCharacter));
    line->append(text.toStdString());
}

} // namespace

AccessRecordDlg::AccessRecordDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : DeviceDialog(cmdClient, log, parent)
{
    setWindowTitle(tr("Access Record Management"));
    setFixedSize(DialogSize);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(createDateRow());
    layout->addLayout(createButtonGrid());
    controls::keepEnterFromButtons(this);
}

QLayout *AccessRecordDlg::createDateRow()
{
    dateEdit = controls::field(new QDateEdit, "dateEdit", DateSize);
    prepareMonthEdit(dateEdit, QDate::currentDate());

    auto *row = new QHBoxLayout;
    row->addWidget(controls::label(tr("Date:"), LabelSize, dateEdit));
    row->addStretch(0);
    row->addWidget(dateEdit);
    row->addStretch(3);
    return row;
}

void AccessRecordDlg::prepareMonthEdit(QDateEdit *edit, const QDate &today)
{
    edit->setDisplayFormat(QStringLiteral("yyyy-MM"));
    // Passing through February turns the day into the 28th. With a later minimum day the first
    // month could then not be reached again.
    const QDate first = today.addMonths(-MonthsBack);
    edit->setDateRange(QDate(first.year(), first.month(), qMin(first.day(), ShortestMonth)),
                       today.addMonths(MonthsAhead));
    edit->setDate(today);
}

QLayout *AccessRecordDlg::createButtonGrid()
{
    QGridLayout *grid =
        controls::buttonGrid({{tr("Acquire Logs"), SLOT(getRecordFilesBtnClickAct())},
                              {tr("Delete Logs"), SLOT(delRecordBtnClickAct())},
                              {tr("Clear Logs"), SLOT(clearRecordBtnClickAct())},
                              {tr("Load Logs"), SLOT(readRecordBtnClickAct())},
                              {tr("Export Logs"), SLOT(exportRecordBtnClickAct())}},
                             ButtonColumns, ButtonSize, this);
    grid->setColumnStretch(ButtonColumns, 1);
    return grid;
}

void AccessRecordDlg::reject()
{
    if (exporting)
        cancelled = true;
    else
        DeviceDialog::reject();
}

bool AccessRecordDlg::fetchNextPage(const QDate &month, uint32_t firstIndex, RecordPage *page)
{
    int equalPages = 0;
    QElapsedTimer attempt;
    client->resynchronize();
    do {
        attempt.start();
        if (fetchRecordPage(client, month, firstIndex, page, pageRounds)) {
            if (pageHashes.insert(page->hash()).second)
                return true;
            if (++equalPages == MaxEqualPages)
                return false;
            client->distrustReply();
        } else if (attempt.elapsed() >= pageRounds) {
            pageRounds = qMin(pageRounds + TimeOutRounds, MaxPageRounds); // the link may be slow
        }
        QCoreApplication::processEvents(); // Esc and closing, delayed during a wait
    } while (!cancelled && client->resynchronize());
    return false;
}

std::string AccessRecordDlg::recordLines(const RecordPage &page, uint32_t from, uint32_t firstIndex)
{
    // The text is split at its placeholders once: arg() for each line took a third of an export.
    //: The placeholders keep their order.
    const QStringList form =
        tr("Index%1: (%2, %3, %4, %5, %6)").split(QRegularExpression(QStringLiteral("%[1-6]")));
    std::string parts[7];
    for (int i = 0; i < 7; ++i)
        parts[i] = form.value(i).toStdString();
    const std::string types[] = {
        tr("Palm").toStdString(), tr("Card").toStdString(), {}}; // 0, 1, any other
    std::string lines;
    lines.reserve((page.count - from) * wire::RecordSize);
    for (uint32_t i = from; i < page.count; ++i) {
        const RecordView record = page.record(i);
        lines.append(parts[0]).append(std::to_string(firstIndex + i)).append(parts[1]);
        appendText(&lines, record.text(0));
        lines.append(parts[2]);
        appendText(&lines, record.text(1));
        lines.append(parts[3]).append(types[qMin<int>(record.type(), 2)]).append(parts[4]);
        appendText(&lines, record.text(2));
        lines.append(parts[5]);
        appendText(&lines, record.text(3));
        lines.append(parts[6]).append(1, '\n');
    }
    return lines;
}

void AccessRecordDlg::getRecordFilesBtnClickAct()
{
    QByteArray text;
    if (!fetchRecordFiles(client, &text))
        return;
    log(tr("Data loaded：%1").arg(text.size()));
    textlog::append(infoText,
                    readRecordFiles(text).value_or(QStringList(tr("json parsing failed."))));
}

void AccessRecordDlg::readRecordBtnClickAct()
{
    RecordPage page;
    if (!fetchRecordPage(client, dateEdit->date(), 0, &page))
        return;
    log(tr("Record loaded：%1").arg(page.count));
    const std::string lines = recordLines(page, page.count - qMin(page.count, MaxShown), 0);
    if (!lines.empty())
        textlog::append(infoText,
                        QString::fromStdString(lines).chopped(1).split(QLatin1Char('\n')));
}

void AccessRecordDlg::exportRecordBtnClickAct()
{
    const QDate month = dateEdit->date();
    const QString path = QCoreApplication::applicationDirPath() +
                         QStringLiteral("/record_%1_%2.txt").arg(month.year()).arg(month.month());
    uint32_t lastCount = 0;
    QWidget *focused = focusWidget();
    setExporting(true);
    const bool saved = exportMonth(month, path, &lastCount);
    setExporting(false);
    if (focused)
        focused->setFocus();
    if (!saved) {
        log(tr("Fail to save the data file."));
        return;
    }
    log(tr("Record loaded：%1").arg(lastCount));
    log(tr("Record data saved to %1").arg(path));
}

void AccessRecordDlg::setExporting(bool started)
{
    exporting = started;
    cancelled = false;
    pageRounds = TimeOutRounds;
    pageHashes.clear();
    setWindowTitle(tr("Access Record Management"));
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setEnabled(!started);
}

bool AccessRecordDlg::exportMonth(const QDate &month, const QString &path, uint32_t *lastCount)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && exportPages(month, &file, lastCount) &&
           commitKeepingLonger(&file);
}

bool AccessRecordDlg::exportPages(const QDate &month, QSaveFile *file, uint32_t *lastCount)
{
    RecordPage page;
    for (uint32_t firstIndex = 0; firstIndex < MaxRecords; firstIndex += wire::RecordsPerPage) {
        if (!fetchNextPage(month, firstIndex, &page) || page.count > wire::RecordsPerPage)
            return false;
        const std::string text = recordLines(page, 0, firstIndex);
        const auto size = static_cast<qint64>(text.size());
        if (file->write(text.data(), size) != size)
            return false;
        if (page.count < wire::RecordsPerPage) {
            *lastCount = page.count;
            return true;
        }
        setWindowTitle(tr("Access Record Management: %1 records").arg(firstIndex + page.count));
    }
    return false;
}

void AccessRecordDlg::delRecordBtnClickAct()
{
    const QDate date = dateEdit->date();
    if (client->deleteMonthRecords(static_cast<uint16_t>(date.year()),
                                   static_cast<uint8_t>(date.month())))
        log(tr("Record deleted."));
}

void AccessRecordDlg::clearRecordBtnClickAct()
{
    if (client->clearRecords())
        log(tr("Record cleared."));
}
