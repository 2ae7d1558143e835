#include "config/outputcfgdlg.h"
#include "config/usercfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "dialogs/accessrecorddlg.h"
#include "dialogs/qrcodedialog.h"
#include "testkit/dialogrig.h"
#include "testkit/windowrig.h"

#include <QtTest>

enum Outcome : int { Refused, Unreadable, Text, TextAndZero };

/// A button that requests a JSON document, and a form of that document with one value used as a
/// text and as a number.
struct Receiver
{
    const char *name;
    MakeWindow make; ///< null: the main window
    const char *code;
    const char *button;
    int longest;         ///< maximum size of the document in bytes
    QByteArray form;     ///< "@" stands for the value
    QStringList lines;   ///< log lines by Outcome; %1: text, %2: size, %3: size + 1
    QByteArray controls; ///< names of the controls for text and number, joined with "|"
};
Q_DECLARE_METATYPE(Receiver)

class TestHostile : public QObject
{
    Q_OBJECT

private slots:
    void showsOrRefusesDocuments_data();
    void showsOrRefusesDocuments();
    void showsLongLists();
};

namespace {

QVector<Receiver> allReceivers()
{
    QVector<Receiver> all;
    const auto add = [&all](const char *name, MakeWindow make, const char *code, const char *button,
                            int longest, const char *form, const QString &ahead,
                            const QStringList &lines, const char *controls = "") {
        all.append({name, make, code, button, longest, form, {}, controls});
        for (const QString &line : lines)
            all.last().lines += ahead + (line.isEmpty() ? "" : "|") + line;
    };
    add("users", nullptr, "10", "getUserListBtnClickAct", 799994,
        R"({"user_list":[{"id":@,"vein_cnt":@}]})",
        "The loaded data count：%3|Data reading succeeded：%2",
        {"JSON parsing failed.", "User count：1|UID:, username: , feature count:0",
         "User count：1|UID:%1, username: , feature count:0",
         "User count：1|UID:%1, username: , feature count:0"});
    add("codes", makeDialog<QRCodeDialog>, "63", "readBtn", 614394,
        R"({"qrcode data":[{"QR":"q","name":@}]})", "data loaded：%2",
        {"json parsing failed.", "QR code record count：1|[][ ]: q",
         "QR code record count：1|[%1][ ]: q", "QR code record count：1|[%1][ ]: q"});
    add("information", nullptr, "17", "getSysInfoBtnClickAct", 2494,
        R"({"dev_name":@,"max_user_num":@})", "System info acquiring succeeded.",
        {"JSON parsing failed.", "", "Device Name：%1", "Device Name：%1|System User Volume：0"});
    add("files", makeDialog<AccessRecordDlg>, "40", "getRecordFilesBtnClickAct", 2494,
        R"({"record_files":["a",@]})", "Data loaded：%2",
        {"json parsing failed.", "a", "a|%1", "a|%1"});
    add("output", makeDialog<OutputCfgDlg>, "1A", "getBtnClickAct", 2494,
        R"({"data block":{"remote ip":@,"sys mode":@}})", "Cfg file loaded：%2",
        {"json parsing failed.", "Wrong parameter of system mode.",
         "Wrong parameter of system mode.", ""},
        "remote ip|sys mode");
    add("user", makeDialog<UserCfgDlg>, "16", "getBtnClickAct", 2494,
        R"({"gateway ip":@,"recg mode":@})", "Cfg file loaded：%2",
        {"json parsing failed", "Wrong authentication mode data", "Wrong authentication mode data",
         ""},
        "gateway ip|recg mode");
    add("vendor", makeDialog<vendorCfgDlg>, "18", "getCfgBtnClickAct", 2494,
        R"({"work param":{"local ip":@},"dev info":{"sound volume":@}})", "cfg file loaded：%2",
        {"json parsing failed.", "Wrong volume data.", "Wrong volume data.", ""},
        "local ip|sound volume");
    return all;
}

QByteArray formed(const Receiver &receiver, const QByteArray &value)
{
    return QByteArray(receiver.form).replace("@", value);
}

/// Returns a value with as many units between its ends as fit into the longest document.
QByteArray longest(const Receiver &receiver, const QByteArray &begin, const QByteArray &unit,
                   const QByteArray &end)
{
    const int rest = receiver.longest - formed(receiver, begin + end).size();
    return begin + unit.repeated(rest / receiver.form.count('@') / unit.size()) + end;
}

struct Rig
{
    explicit Rig(const Receiver &its)
        : receiver(its)
    {
        if (its.make) {
            dialog = std::make_unique<DialogRig>(its.make);
            std::tie(peer, log, window) =
                std::tuple(&dialog->peer, &dialog->log, dialog->dialog.get());
        } else {
            main = std::make_unique<WindowRig>();
            main->connectToPeer();
            std::tie(peer, log, window) =
                std::tuple(&main->peer, main->find<QTextEdit>("infoText"), &main->window);
        }
    }

    /// Returns the lines that the document adds to the log, joined with "|".
    QString receive(const QByteArray &document) const
    {
        peer->expect({hex("EAC5 000001") + hex(receiver.code),
                      {head(document.size() + 1) + '\0' + document}});
        log->clear();
        drive::click(window, receiver.button);
        return log->toPlainText().replace('\n', '|');
    }
    /// Returns the values of the controls by their names.
    QVariantMap controls() const
    {
        QVariantMap held;
        const QRegularExpression ownName("^(?!qt_).");
        for (const QWidget *control : window->findChildren<QWidget *>(ownName)) {
            for (const char *property : {"text", "time", "value", "currentIndex"}) {
                if (control->property(property).isValid())
                    held[control->objectName()] = control->property(property);
            }
        }
        return held;
    }

    const Receiver receiver;
    std::unique_ptr<WindowRig> main;
    std::unique_ptr<DialogRig> dialog;
    ScriptedPeer *peer = nullptr; ///< peer, log and window are those of `dialog` or `main`
    QTextEdit *log = nullptr;
    QWidget *window = nullptr;
};

} // namespace

void TestHostile::showsOrRefusesDocuments_data()
{
    QTest::addColumn<Receiver>("receiver");
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("text");

    const QString no(0xFFFD);
    const QByteArray nul(1, '\0');
    for (const Receiver &receiver : allReceivers()) {
        const auto whole = [&](const char *tag, const QByteArray &document, Outcome outcome,
                               const QString &text = {}) {
            QTest::addRow("%s-%s", receiver.name, tag)
                << receiver << document << int(outcome) << text;
        };
        const auto value = [&](const char *tag, const QByteArray &bytes, Outcome outcome,
                               const QString &text = {}, const QString &latin1 = {}) {
            const bool isLatin1 = !latin1.isNull() && receiver.code == QByteArray("17");
            whole(tag, formed(receiver, bytes), outcome, isLatin1 ? latin1 : text);
        };
        const QByteArray seven = formed(receiver, "\"7\"");
        whole("nested-too-deeply", QByteArray(receiver.longest, '['), Refused);
        whole("nested-objects", QByteArray(R"({"a":)").repeated(receiver.longest / 5), Refused);
        whole("byte-order-mark", "\xEF\xBB\xBF" + seven, Refused);
        whole("nul-ahead", nul + seven, Refused);
        whole("cut", seven.chopped(1), Refused);
        whole("trailing", seven + nul + "}]x", Text, "7");
        whole("comments", "/* a */" + seven + "// b", Text, "7");
        whole("comment-without-end", "/*" + seven, Refused);
        whole("twice", seven.chopped(1) + ',' + formed(receiver, "\"8\"").mid(1), Text, "8");
        value("minus-zero", "-0", TextAndZero, "0");
        value("too-small", "1e-400", TextAndZero, "0.0");
        value("too-great", "1e400", Refused);
        value("400-digits", QByteArray(400, '9'), Refused);
        value("not-utf-8", "\"\xFF\xFEz\"", Text, no + no + 'z', "ÿþz");
        value("surrogate", "\"\xED\xA1\xBF\"", Text, no + no + no, "í¡¿");
        value("low-surrogate-escaped", R"("\uDFFF")", Text, no + no + no, "í¿¿");
        value("high-surrogate-escaped", R"("\uD800")", Refused);
        value("nul", "\"a" + nul + "b\"", Text, QString("a") + QChar(0) + 'b');
        value("nul-escaped", R"("a\u0000b")", Text, QString("a") + QChar(0) + 'b');
        value("nested", QByteArray(500, '[') + QByteArray(500, ']'), Unreadable);
        value("nulls", longest(receiver, "[", "null,", "0]"), Unreadable);
        value("members", longest(receiver, "{", R"("":0,)", R"("":0})"), Unreadable);
        const QByteArray text = longest(receiver, "\"", "a", "\"");
        value("long-text", text, Text, text.mid(1).chopped(1));
    }
}

// The log cuts a line that is too long. A refused document leaves the controls unchanged, with the
// value 3 that was loaded before.
void TestHostile::showsOrRefusesDocuments()
{
    QFETCH(Receiver, receiver);
    QFETCH(QByteArray, document);
    QFETCH(int, outcome);
    QFETCH(QString, text);
    const Rig rig(receiver);
    rig.receive(formed(receiver, "3"));
    QVariantMap controls = rig.controls();
    const QStringList names = QString(receiver.controls).split('|');
    if (names.size() == 2 && outcome >= Text)
        controls[names[0]] = receiver.name == QByteArray("user") ? text : text.left(15);
    if (names.size() == 2 && outcome == TextAndZero)
        controls[names[1]] = 0;

    const int size = document.size();
    QString expected = receiver.lines[outcome];
    expected.replace("%3", QString::number(size + 1)).replace("%2", QString::number(size));
    const QString shown = QString(text).replace(QChar(0), QChar(0xFFFD));
    QStringList lines = expected.replace("%1", shown).split('|');
    for (QString &line : lines) {
        if (line.size() > 1024)
            line = line.left(1024) + "…";
    }
    QCOMPARE(rig.receive(document), lines.join('|'));
    QCOMPARE(rig.controls(), controls);
}

// The log keeps at least the last 50000 lines.
void TestHostile::showsLongLists()
{
    const QVector<Receiver> all = allReceivers();
    const QString lines[] = {"UID:, username: , feature count:0", "[][ ]: "};
    for (const int i : {0, 1}) {
        for (const QByteArray entry : {"{},", "null,"}) {
            const QByteArray begin = all[i].form.left(all[i].form.indexOf('[') + 1);
            const int count = (all[i].longest - begin.size() - 2) / entry.size();
            const QByteArray document = begin + entry.repeated(count).chopped(1) + "]}";
            const QStringList shown = Rig(all[i]).receive(document).split('|');
            QCOMPARE(shown.mid(qMax(0, shown.size() - 50000)).count(lines[i]), 50000);
        }
    }
}

QTEST_MAIN(TestHostile)
#include "tst_hostile.moc"
