#include "dialogs/qrcodedialog.h"
#include "testkit/dialogrig.h"
#include "testkit/modaldriver.h"

#include <QDateTimeEdit>
#include <QGridLayout>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QtTest>

class TestQrCodes : public QObject
{
    Q_OBJECT

private slots:
    void hasItsLayout();
    void adds_data();
    void adds();
    void lists_data();
    void lists();
    void deletes_data();
    void deletes();
    void clears();
};

namespace {

const QByteArray Ok = hex("EAC5 000001 00");
const QString Han(0x5F20);    // three bytes in UTF-8
const QString Accented(0xE9); // two bytes in UTF-8

struct QrRig : DialogRig
{
    QrRig()
        : DialogRig(makeDialog<QRCodeDialog>)
    {
    }
};

QDateTime at(const QString &time)
{
    return QDateTime::fromString(QString(time).replace(' ', 'T') + 'Z', Qt::ISODate);
}

} // namespace

void TestQrCodes::hasItsLayout()
{
    const QrRig rig;
    QCOMPARE(rig.dialog->objectName(), QString("QRCodeDialog"));
    const QRect data(20, 20, 411, 181);
    QCOMPARE(rig.find<QWidget>("gridLayoutWidget_2")->geometry(), data);
    const QRect buttons(30, 220, 381, 91);
    QCOMPARE(rig.find<QWidget>("gridLayoutWidget")->geometry(), buttons);
    const auto *start = rig.find<QDateTimeEdit>("start_time_edit");
    const auto *end = rig.find<QDateTimeEdit>("end_time_edit");
    QCOMPARE(start->dateTime(), at("2023-08-14 00:00:00"));
    QCOMPARE(end->dateTime(), at("2023-08-14 00:00:00"));
    QCOMPARE(start->minimumDateTime(), at("2000-09-14 00:00:00"));
    QCOMPARE(end->minimumDateTime(), at("2000-01-01 00:00:00"));
    QCOMPARE(start->maximumDateTime(), at("2300-12-31 23:59:59"));
    QCOMPARE(end->maximumDateTime(), at("2300-12-31 23:59:59"));
    QCOMPARE(rig.find<QLineEdit>("qr_note_line")->maxLength(), 31);
    QCOMPARE(rig.find<QLineEdit>("qr_data_line")->maxLength(), 511);

    struct Cell
    {
        const char *name;
        const char *layout;
        int row;
        int column;
        const char *text;
        QSize least;
        QSize most;
    };
    constexpr int Any = QWIDGETSIZE_MAX;
    for (const Cell &cell : {
             Cell{"qr_note_lb", "data_layout", 0, 0, "QR Note：", {60, 27}, {80, Any}},
             Cell{"qr_note_line", "data_layout", 0, 1, "", {}, {220, 25}},
             Cell{"qr_data_lb", "data_layout", 1, 0, "QR Data：", {60, 27}, {Any, Any}},
             Cell{"qr_data_line", "data_layout", 1, 1, "", {}, {220, 25}},
             Cell{"start_time_lb", "data_layout", 2, 0, "Start Time：", {60, 27}, {Any, Any}},
             Cell{"start_time_edit", "data_layout", 2, 1, nullptr, {}, {150, 25}},
             Cell{"end_time_lb", "data_layout", 3, 0, "Abort Time：", {60, 27}, {Any, Any}},
             Cell{"end_time_edit", "data_layout", 3, 1, nullptr, {}, {150, 25}},
             Cell{"add_btn", "btn_layout", 4, 0, "Add QR Code", {100, 27}, {100, 27}},
             Cell{"readBtn", "btn_layout", 4, 1, "Load QR List", {100, 27}, {100, 27}},
             Cell{"del_by_note_btn", "btn_layout", 4, 2, "Rm QR by Note", {100, 27}, {100, 27}},
             Cell{"del_by_data_btn", "btn_layout", 5, 0, "Rm QR by Data", {100, 27}, {100, 27}},
             Cell{"clear_btn", "btn_layout", 5, 1, "Clear QR Code", {100, 27}, {100, 27}},
         }) {
        auto *widget = rig.find<QWidget>(cell.name);
        const auto *layout = rig.find<QGridLayout>(cell.layout);
        QVERIFY2(layout->itemAtPosition(cell.row, cell.column)->widget() == widget, cell.name);
        if (cell.text)
            QCOMPARE(widget->property("text").toString(), QString(cell.text));
        if (cell.least.isValid())
            QCOMPARE(widget->minimumSize(), cell.least);
        QCOMPARE(widget->maximumSize(), cell.most);
    }
}

void TestQrCodes::adds_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("data");
    QTest::addColumn<QStringList>("times");
    QTest::addColumn<QByteArray>("timeBytes"); ///< empty: nothing is sent
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("line");

    const QStringList times{"2023-08-14 09:05:00", "2023-08-14 09:05:01"};
    const QByteArray timeBytes = hex("14 17 08 0E 09 05 00  14 17 08 0E 09 05 01");
    const auto sent = [&](const char *tag, const QString &note, const QString &data,
                          const QByteArray &answer = Ok, const char *line = "QR code added.") {
        QTest::newRow(tag) << note << data << times << timeBytes << answer << line;
    };
    const auto refused = [&](const char *tag, const QString &note, const QString &data,
                             const char *line, const QStringList &t) {
        QTest::newRow(tag) << note << data << t << QByteArray() << QByteArray() << line;
    };
    sent("plain", "visitor", "https://visit.example/7");
    sent("blanks-kept", " a ", " b ");
    sent("full-fields", Accented.repeated(16), Accented.repeated(256));
    sent("30-and-510-bytes", Han.repeated(10), Han.repeated(170));
    sent("full", "a", "b", hex("EAC5 000001 1E"), "The QR code database is full.");
    sent("duplicate", "a", "b", hex("EAC5 000001 1F"), "Duplicate QR code data.");
    // This time does not exist in the local time zone.
    QTest::newRow("summer-time") << "a"
                                 << "b" << QStringList{"2026-03-29 02:30:00", "2026-03-29 02:30:01"}
                                 << hex("14 1A 03 1D 02 1E 00  14 1A 03 1D 02 1E 01") << Ok
                                 << "QR code added.";
    QTest::newRow("last-second") << "a"
                                 << "b" << QStringList{"2099-12-31 23:59:59", "2300-12-31 23:59:59"}
                                 << hex("14 63 0C 1F 17 3B 3B  17 00 0C 1F 17 3B 3B") << Ok
                                 << "QR code added.";
    const QStringList equal{"2023-08-14 00:00:00", "2023-08-14 00:00:00"};
    const QString long33 = Han.repeated(11);
    const QString long513 = Han.repeated(171);
    refused("equal-times", "a", "b", "There is an error in the expiration date data.", equal);
    refused("no-note", "", "", "Empty QR code remarks.", equal);
    refused("blank-note", " \t ", long513, "Empty QR code remarks.", equal);
    refused("33-byte-note", long33, "", "The QR code remarks are too long.", equal);
    refused("no-data", "a", "", "Empty QR code data.", equal);
    refused("blank-data", "a", "  ", "Empty QR code data.", equal);
    refused("513-byte-data", "a", long513, "The QR code data is too long.", equal);
}

void TestQrCodes::adds()
{
    QFETCH(QString, note);
    QFETCH(QString, data);
    QFETCH(QStringList, times);
    QFETCH(QByteArray, timeBytes);
    QFETCH(QByteArray, answer);

    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    QrRig rig;
    rig.find<QLineEdit>("qr_note_line")->setText(note);
    rig.find<QLineEdit>("qr_data_line")->setText(data);
    rig.find<QDateTimeEdit>("start_time_edit")->setDateTime(at(times[0]));
    rig.find<QDateTimeEdit>("end_time_edit")->setDateTime(at(times[1]));
    if (!timeBytes.isEmpty())
        rig.peer.expect({hex("EAC5 00022F 60") + note.toUtf8().leftJustified(32, '\0') + timeBytes +
                             data.toUtf8().leftJustified(512, '\0'),
                         {answer}});
    rig.click("add_btn");
    const QStringList lines = rig.lines();
    QCOMPARE(lines.size(), 1);
    QTEST(lines.first(), "line");
    QCOMPARE(rig.find<QLineEdit>("qr_note_line")->text(), note);
}

void TestQrCodes::lists_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char *tag, const QByteArray &document, const QStringList &lines) {
        QTest::newRow(tag) << document << lines;
    };
    const QStringList unreadable("json parsing failed.");
    row("codes",
        R"({"qrcode data": [{"name": "张三", "st": "s", "et": "e", "QR": "q"},
                            {"name": "<b>%2</b>", "st": "%3", "et": "%4", "QR": "%1"}]})",
        {"QR code record count：2", "[张三][s e]: q", "[<b>%2</b>][%3 %4]: %1"});
    row("odd-members", R"({"qrcode data": [{"name": 7, "st": [1], "QR": null}]})",
        {"QR code record count：1", "[7][ ]: "});
    row("empty", R"({"qrcode data": []})", {"QR code record count：0"});
    row("no-array", R"({"qrcode data": {"name": "a"}})", {});
    row("absent", R"({"qrcode_data": []})", {});
    row("no-objects", R"({"qrcode data": [{"name": "a"}, "b"]})", unreadable);
    row("no-object", "[]", unreadable);
    row("no-json", "{", unreadable);
    QByteArray many;
    QStringList manyLines("QR code record count：5000");
    for (int i = 0; i < 5000; ++i) {
        many += QByteArray(i ? "," : "") +
                R"({"name":"n","st":"2026-01-01 00:00:00","et":"2026-12-31 )" +
                R"(23:59:59","QR":"KV-)" + QByteArray::number(i) + "\"}";
        manyLines << QString("[n][2026-01-01 00:00:00 2026-12-31 23:59:59]: KV-%1").arg(i);
    }
    row("5000", "{\"qrcode data\":[" + many + "]}", manyLines);
}

void TestQrCodes::lists()
{
    QFETCH(QByteArray, document);
    QFETCH(QStringList, lines);
    QrRig rig;
    rig.peer.expect({hex("EAC5 000001 63"), {head(document.size() + 1) + '\0' + document}});
    rig.click("readBtn");
    QCOMPARE(rig.lines(), QStringList(QString("data loaded：%1").arg(document.size())) + lines);
}

void TestQrCodes::deletes_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("key"); ///< null: cancelled
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("lines");
    struct Way
    {
        const char *name;
        const char *button;
        const char *label;
        char selector;
        const char *tooLong;
        const char *otherStatus;
    };
    for (const Way &way :
         {Way{"note", "del_by_note_btn", "QR remark：", 1, "参数错误", "Unknown error."},
          Way{"data", "del_by_data_btn", "QR info：", 2, "Wrong parameter.", "unknown error."}}) {
        const auto row = [&way](const char *tag, const QString &key, const QByteArray &answer,
                                const char *line) {
            const QByteArray request =
                hex("EAC5 000022 62") + way.selector + key.toUtf8().leftJustified(32, '\0');
            QTest::addRow("%s-%s", way.name, tag)
                << QByteArray(way.button) << QString(way.label) << key
                << (answer.isEmpty() ? QByteArray() : request) << answer
                << (line ? QStringList(line) : QStringList());
        };
        row("plain", "visitor", Ok, "QR code deleted.");
        row("empty", "", Ok, "QR code deleted.");
        row("32-bytes", Accented.repeated(16), Ok, "QR code deleted.");
        row("33-bytes", Han.repeated(11), {}, way.tooLong);
        row("cancelled", {}, {}, nullptr);
        row("unknown", "a", hex("EAC5 000001 20"), "QR code doesn't exist.");
        row("refused", "a", hex("EAC5 000001 21"), way.otherStatus);
    }
}

void TestQrCodes::deletes()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, label);
    QFETCH(QString, key);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);
    QrRig rig;
    if (!request.isEmpty())
        rig.peer.expect({request, {answer}});
    const ModalDriver driver([&](QWidget *box) {
        auto *input = qobject_cast<QInputDialog *>(box);
        QVERIFY(input);
        QCOMPARE(input->windowTitle(), QString("del QR"));
        QCOMPARE(input->labelText(), label);
        QCOMPARE(input->textValue(), QString());
        input->setTextValue(key);
        key.isNull() ? input->reject() : input->accept();
    });
    rig.click(button.constData());
    QTEST(rig.lines(), "lines");
}

void TestQrCodes::clears()
{
    QrRig rig;
    const auto press = [&rig](const char *answer) {
        const ModalDriver driver([answer](QWidget *box) {
            QCOMPARE(box->windowTitle(), QString("warn"));
            QCOMPARE(qobject_cast<QMessageBox *>(box)->text(),
                     QString("sure to clear QR code data?"));
            answer::click(answer)(box);
        });
        rig.click("clear_btn");
    };
    press("No");
    QCOMPARE(rig.lines(), QStringList());
    rig.peer.expect({hex("EAC5 000001 61"), {Ok}});
    press("Yes");
    QCOMPARE(rig.lines(), QStringList("QR code data cleared."));
}

QTEST_MAIN(TestQrCodes)
#include "tst_qrcodes.moc"
