#include "testkit/steps.h"

#include <QDateTimeEdit>
#include <QLocale>

namespace {

/// Lists the files, shows the latest records and exports the month to the folder.
Answer useRecords(const QDir &folder)
{
    return [&folder](QWidget *dialog) {
        drive::click(dialog, "getRecordFilesBtnClickAct");
        drive::click(dialog, "readRecordBtnClickAct");
        clickExport(
            dialog, "exportRecordBtnClickAct",
            QLocale::c().toString(QDate::currentDate(), QStringLiteral("'record_'yyyy_M'.txt'")),
            folder.absoluteFilePath(QStringLiteral("tour-records.txt")));
        dialog->close();
    };
}

Answer removeRecords()
{
    return [](QWidget *dialog) {
        drive::click(dialog, "delRecordBtnClickAct");
        drive::click(dialog, "clearRecordBtnClickAct");
        dialog->close();
    };
}

/// Adds a code that is refused and one that is accepted, lists the codes and deletes them.
Answer useQrCodes()
{
    return [](QWidget *dialog) {
        drive::type(dialog, "qr_note_line", QStringLiteral("visitor 7"));
        drive::type(dialog, "qr_data_line", QStringLiteral("https://visit.example/7"));
        drive::click(dialog, "add_btn");
        dialog->findChild<QDateTimeEdit *>(QStringLiteral("end_time_edit"))
            ->setDateTime(QDateTime(QDate(2030, 12, 31), QTime(23, 59, 59)));
        drive::click(dialog, "add_btn");
        drive::click(dialog, "readBtn");
        drive::click(dialog, "del_by_note_btn");
        drive::click(dialog, "del_by_data_btn");
        drive::click(dialog, "clear_btn");
        dialog->close();
    };
}

} // namespace

std::vector<Step> recordSteps(const QDir &folder)
{
    return {
        {QStringLiteral("records"),
         [&folder](Console &console) { console.click("recordBtnClickAct", {useRecords(folder)}); },
         [](const Console &console) {
             const QStringList lines = console.newInfoLines();
             return anyMatch(lines, "record_20[0-9]{2}_[01][0-9]\\.dat") &&
                    anyMatch(lines, "Index[0-9]+: \\(.+, .+, (Palm|Card), .+, .+\\)") &&
                    anyMatch(lines, "Record data saved to .*/record_20[0-9]{2}_[0-9]+\\.txt");
         }},
        {QStringLiteral("records-removed"),
         [](Console &console) { console.click("recordBtnClickAct", {removeRecords()}); },
         [](const Console &console) {
             return console.newInfoLines() == QStringList{QStringLiteral("Record deleted."),
                                                          QStringLiteral("Record cleared.")};
         }},
        {QStringLiteral("qr-codes"),
         [](Console &console) {
             console.click("qrcodeBtnClickAct",
                           {useQrCodes(), answer::text(QStringLiteral("visitor 7")),
                            answer::text(QStringLiteral("no such data")), answer::yes()});
         },
         [](const Console &console) {
             const QStringList lines = console.newInfoLines();
             return anyMatch(lines, "There is an error in the expiration date data\\.") &&
                    anyMatch(lines, "QR code added\\.") &&
                    anyMatch(lines, "\\[visitor 7\\]\\[.* .*\\]: https://visit\\.example/7") &&
                    anyMatch(lines, "QR code deleted\\.") &&
                    anyMatch(lines, "QR code doesn't exist\\.") &&
                    anyMatch(lines, "QR code data cleared\\.");
         }},
    };
}
