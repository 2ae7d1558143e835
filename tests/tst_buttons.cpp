#include "data/wholefile.h"
#include "dialogs/adduserdlg.h"
#include "dialogs/qrcodedialog.h"
#include "dialogs/remoteenrolldlg.h"
#include "dialogs/setsysinfodlg.h"
#include "testkit/modaldriver.h"
#include "testkit/windowrig.h"

#include <QFileDialog>
#include <QLabel>
#include <QtTest>

/// A click on a button and what comes of it. Values of controls are "name=value"; they, log lines
/// and the texts of a box are joined with "|".
struct Click
{
    MakeWindow window;
    QByteArray button;
    QString before;
    QByteArray request; ///< empty: none
    QByteArray reply;   ///< empty: the terminal is silent
    QString lines;
    QString after = {}; ///< "visible" is a value of the window
    QString box = {};   ///< the modal box that opens
    Answer answer = {};
};
Q_DECLARE_METATYPE(Click)

/// Buttons of the main window and of dialogs that exchange at most one request and its reply.
class TestButtons : public QObject
{
    Q_OBJECT

private slots:
    void clicks_data();
    void clicks();
};

namespace {

constexpr MakeWindow AddUser = makeDialog<AddUserDlg>;
constexpr MakeWindow QrCodes = makeDialog<QRCodeDialog>;
constexpr MakeWindow Settings = makeDialog<setSysInfoDlg>;
constexpr MakeWindow Window = makeConnectedWindow;

const char Ok[] = "EAC5 000001 00";
const QString Accented(0xE9); // two bytes in UTF-8

/// Requests and replies are in hexadecimal digits.
void row(const char *name, MakeWindow window, const char *button, const QString &before,
         const QByteArray &request, const QByteArray &reply, const QString &lines,
         const QString &after = {})
{
    QTest::newRow(name) << Click{window, button, before, hex(request), hex(reply), lines, after};
}

/// Adds a click that opens a box, with a request that succeeds or none.
void boxRow(const char *name, MakeWindow window, const char *button, const char *box,
            const Answer &answer, const QByteArray &request = {}, const char *line = "",
            const QString &before = {}, const QString &after = {})
{
    QTest::newRow(name) << Click{window, button, before, hex(request), hex(Ok),
                                 line,   after,  box,    answer};
}

/// Returns the digits of a text's bytes, padded with zeros.
QByteArray padded(const QString &text, int width)
{
    return text.toUtf8().leftJustified(width, '\0').toHex();
}

/// Returns the path of a new file of this size.
QString fileOf(int size)
{
    static const QTemporaryDir folder;
    QString path = folder.filePath(QString::number(size));
    writeWholeFile(path, frame(1).left(size));
    return path;
}

void addUserRows()
{
    const auto create = [](const char *lines, const QString &before, const QByteArray &user = {},
                           const char *reply = Ok, const char *after = "visible=true") {
        row(qPrintable(before), AddUser, "createBtnClickAct", before,
            user.isEmpty() ? user : "EAC5 000049 30" + user, reply, lines, after);
    };
    // The fields take 31 characters and drop the first half of a surrogate pair at their end.
    create("User created.",
           "userIdSpinBox=70000|cardEdit=4294967295|userNameEdit=" + QString(40, 'n') +
               "|departmentEdit=" + QString(30, 'd') + QChar(0xD83D),
           "00010000 FFFFFFFF" + padded(QString(31, 'n'), 32) + padded(QString(30, 'd'), 32), Ok,
           "visible=false");
    create("User ID exists.|User creating failed.", "userNameEdit=a",
           "00000001 00000000" + padded("a", 64), "EAC5 000001 14");
    create("User created.", "userNameEdit=a|cardEdit=4294967296",
           "00000001 00000000" + padded("a", 64), Ok, "visible=false");
    const QString department = "|departmentEdit=" + Accented.repeated(17);
    create("Username can't be empty.", department);
    create("The username is too long.", "userNameEdit=" + Accented.repeated(17) + department);
    create("The department name is too long.", "userNameEdit=a" + department);
    row("exit", AddUser, "cancelBtnClickAct", "", "", "", "", "visible=false");

    const char getId[] = "getEmptyUIDBtnClickAct";
    row("id", AddUser, getId, "", "EAC5 000001 33", "EAC5 000005 00 00000102",
        "Empty user ID getting succeeded.", "userIdSpinBox=258");
    row("greatest-id", AddUser, getId, "", "EAC5 000001 33", "EAC5 000005 00 FFFFFFFF",
        "Empty user ID getting succeeded.", "userIdSpinBox=65536");
    row("no-id", AddUser, getId, "userIdSpinBox=9", "EAC5 000001 33", "EAC5 000001 16",
        "The user database is full.", "userIdSpinBox=9");
}

void addQrCodeRows()
{
    const auto add = [](const char *line, const QString &note, const QString &data,
                        const QString &times = {}, const QByteArray &timeBytes = {}) {
        const QByteArray request =
            "EAC5 00022F 60" + padded(note.left(31), 32) + timeBytes + padded(data.left(511), 512);
        row(qPrintable(line + times), QrCodes, "add_btn",
            "qr_note_line=" + note + "|qr_data_line=" + data + times,
            timeBytes.isEmpty() ? "" : request, Ok, line);
    };
    // The first time is one that the computer's time zone skips.
    add("QR code added.", " visitor ", Accented.repeated(256),
        "|start_time_edit=2026-03-29T02:30:00Z|end_time_edit=2099-12-31T23:59:59Z",
        "14 1A 03 1D 02 1E 00  14 63 0C 1F 17 3B 3B");
    // Texts that are cut and times that are out of range.
    add("QR code added.", QString(40, 'n'), QString(600, 'd'),
        "|start_time_edit=1990-01-01T00:00:00Z|end_time_edit=2400-01-01T00:00:00Z",
        "14 00 09 0E 00 00 00  17 00 0C 1F 17 3B 3B");
    add("There is an error in the expiration date data.", "a", "b");
    add("Empty QR code remarks.", " \t ", "");
    add("The QR code remarks are too long.", Accented.repeated(17), "");
    add("Empty QR code data.", "a", "  ");
    add("The QR code data is too long.", "a", Accented.repeated(257));
}

void qrCodeRows()
{
    const QString note = Accented.repeated(16);
    boxRow("note", QrCodes, "del_by_note_btn", "del QR|QR remark：", answer::text(note),
           "EAC5 000022 62 01" + padded(note, 32), "QR code deleted.");
    boxRow("data", QrCodes, "del_by_data_btn", "del QR|QR info：", answer::click("OK"),
           "EAC5 000022 62 02" + padded("", 32), "QR code deleted.");
    boxRow("no-data", QrCodes, "del_by_data_btn", "del QR|QR info：", answer::close());
    const char sure[] = "warn|sure to clear QR code data?";
    boxRow("clear-codes", QrCodes, "clear_btn", sure, answer::click("Yes"), "EAC5 000001 61",
           "QR code data cleared.");
    boxRow("keep-codes", QrCodes, "clear_btn", sure, answer::click("No"));

    const auto list = [](const char *name, const QByteArray &document, const QString &lines) {
        row(name, QrCodes, "readBtn", "", "EAC5 000001 63", replyWith(document).toHex(),
            QString("data loaded：%1").arg(document.size()) + lines);
    };
    list("codes", R"({"qrcode data": [{"name": "张三", "st": "s", "et": "e", "QR": "q"},
                             {"name": "<b>%2</b>", "st": "%3", "et": "%4", "QR": "%1"}]})",
         "|QR code record count：2|[张三][s e]: q|[<b>%2</b>][%3 %4]: %1");
    list("codes-in-no-list", R"({"qrcode data": {"name": "a"}})", "");
    list("code-as-text", R"({"qrcode data": [{"name": "a"}, "b"]})", "|json parsing failed.");
    list("longest-codes", R"({"qrcode data": [{"QR": ")" + QByteArray(614362, '\xFF') + "\"}]}",
         "|QR code record count：1|" + QString("[][ ]: ").leftJustified(1024, QChar(0xFFFD)) + "…");
}

void serialNumberRows()
{
    const char set[] = "setSerialBtnClickAct";
    const char wrong[] = "Wrong format of serial number.";
    row("serial", Settings, set, "serialEdit=KV2403abcDEF789",
        "EAC5 000011 50" + padded("KV2403abcDEF789", 16), Ok, "Serial number set succeded.");
    row("short-serial", Settings, set, "serialEdit=KV2403abcDEF78", "", "", wrong);
    row("other-digits", Settings, set, "serialEdit=KV۲۶۱۱abcDEF789", "", "", wrong);

    const char files[] = "select fw|bin|All Files (*)";
    boxRow("firmware", Settings, "selectOtaFileBtnClickAct", files, answer::file(fileOf(1)), "", "",
           "", "firmwareEdit=" + fileOf(1));
    row("upgrade", Settings, "otaBtnClickAct", "", "", "", "Not supported for now.");
    boxRow("no-firmware", Settings, "selectOtaFileBtnClickAct", files, answer::close(), "", "",
           "firmwareEdit=a", "firmwareEdit=a");
}

// The box shows the mode that was commanded last, even if in vain.
void modeRows()
{
    const auto click = [](const char *lines, const char *button, const char *request,
                          const char *reply, const char *mode = "modeCombo=Enroll") {
        row(lines, Window, button, "modeCombo=Enroll", request, reply, lines, mode);
    };
    click("Mode set failed: A|Instruction sending failed.", "idealBtnClickAct", "EAC5 000002 0400",
          "EAC5 000001 41", "modeCombo=Empty");
    click("Mode set failed: A|Fail to set mode.", "recgBtnClickAct", "EAC5 000002 0403",
          "EAC5 000001 41", "modeCombo=Local Recognition");
    const char get[] = "getModeBtnClickAct";
    click("Current mode：Empty", get, "EAC5 000001 05", "EAC5 000001 00");
    click("Current mode：Enroll", get, "EAC5 000001 05", "EAC5 000001 01");
    click("Current mode：other mode", get, "EAC5 000001 05", "EAC5 000001 02");
    click("Current mode：Local Recognition", get, "EAC5 000001 05", "EAC5 000001 03");
    click("Current mode：Remote Recognition", get, "EAC5 000001 05", "EAC5 000001 04");
    click("Fail to get mode.", get, "EAC5 000001 05", "");
}

void userRows()
{
    row("clear-users", Window, "clearUserBtnClickAct", "", "EAC5 000001 0E", Ok, "User cleared.");
    const char remove[] = "delUserBtnClickAct";
    const char box[] = "User ID|User ID：";
    boxRow("first-user", Window, remove, box, answer::click("OK"), "EAC5 000005 31 00000001",
           "User deleted successfully:1", "idSpinBox=99");
    boxRow("last-user", Window, remove, box, answer::number(70000), "EAC5 000005 31 00010000",
           "User deleted successfully:65536");
    boxRow("no-user", Window, remove, box, answer::close());
    boxRow("features", Window, "clearUserFeatBtnClickAct", box, answer::number(258),
           "EAC5 000005 34 00000102", "User features deleted successfully:258");

    const char import[] = "importFeatureBtnClickAct";
    const char wrong[] = "Wrong format of feature file.";
    const char files[] = "Select feature file|remote|*.bin";
    boxRow("file", Window, import, files, answer::file(fileOf(10240)),
           "EAC5 002806 2A 00 00000001" + frame(1).left(10240).toHex(),
           "Feature file importing succeeded.", "idSpinBox=0");
    boxRow("long-file", Window, import, files, answer::file(fileOf(10241)), "", wrong);
    boxRow("no-file", Window, import, files, answer::close());
    row("remote", makeDialog<RemoteEnrollDlg>, "startBtnClickAct", "", "EAC5 000006 04 06 000000FF",
        Ok,
        "Remote enrollment has been started, please follow the instructions of the device "
        "to complete the enroll operation");
}

void settingsRows()
{
    const char sure[] = "warning|Sure to reboot the system?";
    boxRow("reboot", Window, "rebootBtnClickAct", sure, answer::click("Yes"), "EAC5 000001 EF",
           "The system will restart after 10 seconds.");
    boxRow("no-reboot", Window, "rebootBtnClickAct", sure, answer::click("No"));
    const char key[] = "Vendor secret key|secret key";
    boxRow("no-key", Window, "manuCfgBtnClickAct", key, answer::close(), "", "Wrong secret key.");
    boxRow("key-with-blank", Window, "manuCfgBtnClickAct", key, answer::text("qrabel274 "), "",
           "Wrong secret key.");
}

void userListRows()
{
    const auto list = [](const char *name, const QByteArray &document, const QString &lines) {
        row(name, Window, "getUserListBtnClickAct", "", "EAC5 000001 10",
            replyWith(document).toHex(),
            QString::asprintf("The loaded data count：%d|Data reading succeeded：%d",
                              document.size() + 1, document.size()) +
                lines);
    };
    list("users", R"({"user_list": [{"id": 7, "user_name": "张三", "vein_cnt": 2, "print_cnt": 1},
             {"id": "00012", "user_name": "<b>%1</b> %3", "vein_cnt": 2147483647, "print_cnt": 1},
             {"id": [1], "user_name": {}, "vein_cnt": "2", "print_cnt": 1e10}]})",
         "|User count：3|UID:7, username: 张三, feature count:3"
         "|UID:00012, username: <b>%1</b> %3, feature count:2147483648"
         "|UID:, username: , feature count:0");
    list("no-list", R"({"users": []})", "");
    list("array", R"([{"user_list": []}])", "|JSON parsing failed.");
    list("longest-users", R"({"user_list": [{"id": ")" + QByteArray(799964, '\xFF') + "\"}]}",
         "|User count：1|" + QString("UID:").leftJustified(1024, QChar(0xFFFD)) + "…");
}

void informationRows()
{
    const auto show = [](const char *name, const QByteArray &document, const char *lines) {
        row(name, Window, "getSysInfoBtnClickAct", "", "EAC5 000001 17",
            replyWith(document).toHex(), QString("System info acquiring succeeded.") + lines);
    };
    show("information",
         R"({"mac_address": "02:00:5E:00:53:01", "max_record_num": 100000, "max_user_num": 3000,
            "qrcode_alg_version": "q3", "print_alg_version": "p2", "vein_alg_version": "v1",
            "fw_version": "1.0", "dev_serial": "KV2403abcdefghi", "dev_name": "ZT415", "other": 1})",
         "|Device Name：ZT415|Device Serial Number：KV2403abcdefghi|Firmware Version：1.0"
         "|Vein Algorithm Version：v1|Print Algorithm Version：p2|QrCode Algorithm Version：q3"
         "|System User Volume：3000|System Record Volume：100000|MAC Address：02:00:5E:00:53:01");
    show(
        "other-kinds",
        R"({"dev_name": null, "fw_version": {}, "dev_serial": 5, "max_user_num": null, "max_record_num": -1, "mac_address": 5})",
        "|Device Serial Number：5");
    show("latin-1",
         "{\"dev_name\": \"caf\xE9\\u0000\xFF\", \"mac_address\": \"\xB5\\u000003\","
         " \"max_user_num\": 4294967295}",
         "|Device Name：café�ÿ|System User Volume：4294967295|MAC Address：µ");
    show("no-json", "dev_name", "|JSON parsing failed.");
}

/// Returns the title and texts of a modal box; of a file dialog its title, folder and filters.
QString described(const QWidget *box)
{
    QStringList parts(box->windowTitle());
    if (const auto *files = qobject_cast<const QFileDialog *>(box))
        return (parts << files->directory().dirName() << files->nameFilters()).join('|');
    for (const QLabel *label : box->findChildren<QLabel *>())
        parts << label->text();
    return parts.filter(QRegularExpression(".")).join('|');
}

} // namespace

void TestButtons::clicks_data()
{
    QTest::addColumn<Click>("click");
    qputenv("TZ", "CET-1CEST,M3.5.0/2,M10.5.0/3"); // a time zone that skips an hour
    QVERIFY(QDir().mkpath(QCoreApplication::applicationDirPath() + "/remote"));
    for (const auto addRows : {addUserRows, addQrCodeRows, qrCodeRows, serialNumberRows, modeRows,
                               userRows, settingsRows, userListRows, informationRows})
        addRows();
}

void TestButtons::clicks()
{
    QFETCH(Click, click);
    DialogRig rig(click.window);
    for (const QString &pair : click.before.split('|', Qt::SkipEmptyParts))
        rig.setValue(pair.section('=', 0, 0), pair.section('=', 1));
    if (!click.request.isEmpty())
        rig.peer.expect({click.request, {click.reply}});
    std::vector<Answer> answers;
    if (click.answer)
        answers.emplace_back([&click](QWidget *box) {
            QCOMPARE(described(box), click.box);
            click.answer(box);
        });
    const ModalDriver driver(answers);
    rig.click(click.button);
    QCOMPARE(rig.lines().join('|'), click.lines);
    for (const QString &pair : click.after.split('|', Qt::SkipEmptyParts)) {
        const QString name = pair.section('=', 0, 0);
        const QVariant value = name == "visible" ? rig.dialog->isVisible() : rig.value(name);
        QCOMPARE(value.toString(), pair.section('=', 1));
    }
}

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
