#include "app/appearance.h"
#include "configrig.h"
#include "data/dottedquad.h"
#include "testkit/modaldriver.h"

#include <QGroupBox>
#include <QInputDialog>
#include <QScrollBar>
#include <QSpinBox>
#include <QtTest>

class TestConfig : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareAppearance(); }
    void cleanup() { removeExports(); }
    void showsValues_data();
    void showsValues();
    void loadsAndSends_data();
    void loadsAndSends();
    void recognisesDottedQuads();
    void describesTheMode();
    void limitsTypedText();
    void setsClockAndSensor_data();
    void setsClockAndSensor();
    void setsTheClockWithinItsYears();
};

namespace {

/// Returns the JSON text of a form, in which ' stands for ", / for a line break and > for a tab.
QByteArray written(QByteArray form)
{
    return form.replace('\'', '"').replace('/', '\n').replace('>', '\t');
}

} // namespace

void TestConfig::showsValues_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QStringList>("accepted"); ///< "value=shown"
    QTest::addColumn<QStringList>("refused");
    QTest::addColumn<QString>("line");  ///< log line for a refused value; empty: none
    QTest::addColumn<int>("elsewhere"); ///< dialog where the key has another meaning

    const auto row = [](const char *keys, const QStringList &accepted, const QString &refused,
                        const char *line = "", int elsewhere = -1) {
        QStringList others{"[1]", R"({"a":1})"};
        if (!accepted[0].startsWith('"'))
            others += QStringList{R"("1")", "4294967297", "-4294967295", "1e300"};
        QTest::newRow(keys) << keys << accepted << refused.split(' ', Qt::SkipEmptyParts) + others
                            << line << elsewhere;
    };
    const auto texts = [](int length) {
        const QString digits(40, '1');
        return QStringList{R"("300.1 a"=300.1 a)", R"("\u5f20张"=张张)", R"(""=)",
                           '"' + digits + "\"=" + digits.left(length)};
    };
    row("sys mode",
        {"4=Remote Feat. Mode", "0=Stand-alone Mode", "1=Background Mode", "2=Gate&Visitor Mode",
         "3=Remote Image Mode", "10=Recorder Mode"},
        "5 9 11 -1", "Wrong parameter of system mode.");
    row("sys http version", {"9=", "0=V1.0 General", "2=", "1=V1.1 Custom"}, "10 -1");
    row("remote port, local port", {"1=1000", "65535=65535", "80=1000", "2000=2000"},
        "0 65536 70000 -1", "", User);
    row("local port", {"1=1", "65535=65535", "80=80"}, "0 65536 70000 -1", "", Vendor);
    row("remote port", {"1=1", "65535=65535", "80=80"}, "0 65536 70000 -1", "", Output);
    row("palm recg mode", {"3=", "0=palm vein", "2=vein & print", "1=palmprint"}, "4 -1",
        "Wrong data of recognition mode.");
    row("fake detect, use card, use qrcode, record upload func, rs485 output res func, "
        "relay output func, wegen output func, remote enroll func",
        {"1=open", "0=close", "5=open", "0=close", "-1=open", "0=close"}, "", "", User);
    row("max palm fail cnt", {"1=3", "29=20", "3=3", "25=20", "4=4"}, "0 30 -1",
        "Wrong parameter of max recognition count.");
    row("detect similar hand, auto reboot", {"0=close", "1=open"}, "2 -1");
    row("card forward type", {"2=RS485 & Wiegand", "0=RS485", "1=Wiegand"}, "3 -1",
        "Wrong data of card pass-through mode.");
    row("qrcode server port", {"65535=65535", "0=1000", "65536=65535", "-5=1000", "2000=2000"}, "");
    row("qrcode forward type", {"0=RS485", "1=TCP/IP"}, "2 -1");
    row("record server port", {"65536=65536", "-5=1000", "65537=65536", "2000=2000"}, "");
    row("record server protocal", {"1=HTTP", "0=TCP", "-1=HTTP", "0=TCP"}, "");
    row("rs485 output type", {"2=用户名", "0=用户ID", "1=卡号"}, "3 -1");
    row("weigen type", {"0=34", "1=26"}, "2 -1");
    row("weigen content", {"0=user ID", "1=card number"}, "2 -1");
    row("recg mode", {"3=vein or print", "0=palm vein", "2=vein & print", "1=palmprint"}, "4 -1",
        "Wrong authentication mode data");
    row("use qrcode", {"2=pass-through", "0=close", "1=open"}, "3 -1",
        "Wrong QR code parameter data", Output);
    row("user dev type", {"0=in", "1=out"}, "2 -1");
    row("auto reboot time", {"0=00:00", "1439=23:59", "61=01:01"}, "1440 -1");
    row("sound volume", {"31=31", "0=0", "30=30"}, "32 -1", "Wrong volume data.");
    row("remote ip, local ip, gateway ip", texts(15), "", "", User);
    row("local ip, gateway ip", texts(40), "", "", Vendor);
    row("remote ip", texts(40), "", "", Output);
    row("qrcode server ip, record server ip", texts(40), "");
    row("manufacture name, dev notes, dev location desc", texts(32), "");
}

// Each block of the document has all keys; every dialog shows the ones that it knows.
void TestConfig::showsValues()
{
    QFETCH(QString, keys);
    QFETCH(QStringList, accepted);
    QFETCH(QStringList, refused);
    QFETCH(QString, line);
    QFETCH(int, elsewhere);
    int checked = 0;
    for (const Dialog dialog : All) {
        ConfigRig rig(dialog);
        QStringList known;
        for (const QString &key : keys.split(", ")) {
            if (elsewhere != dialog && rig.dialog->findChild<QWidget *>(key))
                known += key;
        }
        for (const QString &value : known.isEmpty() ? known : accepted + refused) {
            const bool isAccepted = accepted.contains(value);
            const QString text = value.section('=', 0, 0);
            const QString members = '"' + known.join("\":" + text + ",\"") + "\":" + text;
            QString document = '{' + members;
            for (const char *block :
                 {"data block", "recg info block", "cfg output block", "dev info", "work param"})
                document += QString(",\"") + block + "\":{" + members + '}';
            QCOMPARE(value + ": " + rig.load(document.toUtf8() + '}'),
                     value + ": " + (isAccepted ? QString() : line));
            const QString wanted = (isAccepted ? value : accepted.last()).section('=', 1);
            for (const QString &key : known)
                QCOMPARE(value + ": " + rig.shown(key), value + ": " + wanted);
            ++checked;
        }
    }
    QVERIFY(checked > 0);
}

void TestConfig::loadsAndSends_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("lines");   ///< log lines behind the first
    QTest::addColumn<QByteArray>("form"); ///< form of the document that is sent

    const QByteArray forms[] = {
        "{/>'cfg output block' : />{/>>'record server port' : 1000,/>>'record server protocal' : 0,"
        "/>>'record upload func' : 0,/>>'relay output func' : 0,/>>'rs485 output res func' : 0,"
        "/>>'rs485 output type' : 0,/>>'wegen output func' : 0,/>>'weigen content' : 0,"
        "/>>'weigen type' : 0/>},/>'data block' : />{/>>'remote port' : 18080,"
        "/>>'sys http version' : 0,/>>'sys mode' : 0/>},/>'recg info block' : />{"
        "/>>'card forward type' : 0,/>>'detect similar hand' : 0,/>>'fake detect' : 0,"
        "/>>'max palm fail cnt' : 15,/>>'palm recg mode' : 0,/>>'qrcode forward type' : 0,"
        "/>>'qrcode server port' : 1000,/>>'use card' : 0,/>>'use qrcode' : 0/>}/}",
        "{/>'auto reboot' : 0,/>'auto reboot time' : 270,/>'detect similar hand' : 0,"
        "/>'local port' : 20086,/>'recg mode' : 0,/>'remote port' : 18080,/>'use qrcode' : 0,"
        "/>'user dev type' : 0/}",
        "{/>'dev info' : />{/>>'dev location desc' : '',/>>'dev notes' : '',"
        "/>>'manufacture name' : '',/>>'sound volume' : 0,/>>'user dev type' : 0/>},"
        "/>'sys set' : null,/>'work param' : />{/>>'auto reboot' : 1,/>>'auto reboot time' : 270,"
        "/>>'local port' : 1000,/>>'remote enroll func' : 0/>}/}"};
    /// `changes` lists the differences from the dialog's initial form: old text, new text, ...
    const auto row = [&](Dialog dialog, const char *tag, const QByteArray &document,
                         const QString &lines, const QByteArrayList &changes = {}) {
        QByteArray form = forms[dialog];
        for (int i = 0; i < changes.size(); i += 2)
            form.replace(changes[i], changes[i + 1]);
        QTest::newRow((Words[dialog][Name] + ('-' + QByteArray(tag))).constData())
            << document << lines << form;
    };
    for (const Dialog dialog : All) {
        row(dialog, "empty", "", Words[dialog][Unparsed]);
        row(dialog, "array", R"([{"sys mode": 1}])", Words[dialog][Unparsed]);
        row(dialog, "null", "null", "");
        row(dialog, "unknown", R"({"sys mode": 1, "other": {"sound volume": 9}})", "");
    }
    row(Output, "no-block", R"({"data block": {"sys mode": 1}, "cfg output block": []})",
        "json parsing failed.");
    row(Vendor, "no-block", R"({"dev info": {"sound volume": 9}, "work param": "a"})",
        "json parsing failed.");
    row(Output, "no-addresses",
        R"({"data block": {"remote ip": "192.168.1"},
            "recg info block": {"qrcode server ip": "300.1.1.1"},
            "cfg output block": {"record server ip": " "}})",
        "");
    row(Output, "changed",
        R"({"data block": {"remote ip": "1..2.3", "sys mode": 10, "sys http version": 9}})", "",
        {"'remote port'", "'remote ip' : '1..2.3',/>>'remote port'", "version' : 0",
         "version' : -1", "mode' : 0/>}", "mode' : 10/>}"});
    row(Output, "goes-on",
        R"({"cfg output block": {"weigen type": 1, "rs485 output type": 3},
            "recg info block": {"use card": 5, "card forward type": 3, "max palm fail cnt": 30,
                                "palm recg mode": 4, "qrcode server port": 2000},
            "data block": {"sys http version": 1, "sys mode": 5}})",
        "Wrong parameter of system mode.|Wrong data of recognition mode.|"
        "Wrong parameter of max recognition count.|Wrong data of card pass-through mode.",
        {"version' : 0", "version' : 1", "use card' : 0", "use card' : 1",
         "qrcode server port' : 1000", "qrcode server port' : 2000", "weigen type' : 0",
         "weigen type' : 1"});
    row(User, "goes-on", R"({"use qrcode": 3, "recg mode": 4, "auto reboot time": 450})",
        "Wrong authentication mode data|Wrong QR code parameter data", {"270", "450"});
    // A length limit within a character removes the whole character.
    row(Vendor, "goes-on",
        R"({"dev info": {"sound volume": 32, "manufacture name": "张\u4e09",
                         "dev notes": "1234567890123456789012345678901😀"},
            "sys set": [1], "work param": {"remote enroll func": 5}})",
        "Wrong volume data.",
        {"name' : '", "name' : '张三", "notes' : '", "notes' : '1234567890123456789012345678901",
         "func' : 0", "func' : 1"});
}

void TestConfig::loadsAndSends()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, lines);
    QFETCH(QByteArray, form);
    ConfigRig rig(dialogOfRow());
    const auto groups = rig.dialog->findChildren<QGroupBox *>();
    const auto countLocked = [&] {
        return int(std::count_if(groups.begin(), groups.end(),
                                 [](const QGroupBox *group) { return !group->isEnabled(); }));
    };
    const int locked[] = {5, 0, 2};
    QCOMPARE(countLocked(), locked[dialogOfRow()]);
    QCOMPARE(rig.load(document), lines);
    QCOMPARE(countLocked(), lines == rig.words[Unparsed] ? locked[dialogOfRow()] : 0);
    QCOMPARE(rig.send("Set", written(form)), QString(rig.words[Issued]));

    const QString refused = "Unknown error.";
    QCOMPARE(rig.send("Set", written(form), Refusal), refused);
    QCOMPARE(rig.get("Load", "{}", 1), refused);
    QCOMPARE(rig.get("Export", "{}", 1), refused);
    QVERIFY(!QFile::exists(rig.path));
}

void TestConfig::recognisesDottedQuads()
{
    for (const char *text : {"0.0.0.0", "255.255.255.255", "1..2.3", "...", "a.b.c.d", "01.2.3.4"})
        QVERIFY2(isDottedQuad(text), text);
    for (const char *text : {"", " ", "1.2.3", "1.2.3.4.5", "256.1.1.1", "1.1.1.256", "1.-1.1.1"})
        QVERIFY2(!isDottedQuad(text), text);
}

void TestConfig::describesTheMode()
{
    const ConfigRig rig(Output);
    const auto *box = rig.find<QTextEdit>("description");
    auto *modes = rig.find<QComboBox>("sys mode");
    for (const char *part : {"only allows user data", "are obtained from the background and",
                             "the QR code is verified", "image acquisition device",
                             "feature collection device", "can be used as an recorder"}) {
        QVERIFY2(box->toPlainText().contains(part), part);
        QCOMPARE(box->verticalScrollBar()->maximum(), 0);
        const int paragraphs[] = {2, 1, 1, 3, 3, 1};
        QCOMPARE(box->document()->blockCount(), paragraphs[modes->currentIndex()]);
        modes->setCurrentIndex(modes->currentIndex() + 1);
    }
    QCOMPARE(modes->currentIndex(), -1);
    QCOMPARE(box->toPlainText(), QString());
}

// The Enter key presses no button: the peer would report a request.
void TestConfig::limitsTypedText()
{
    using Typing = std::tuple<Dialog, const char *, const char *, const char *>;
    for (const auto &[dialog, key, typed, shown] : {
             Typing(Output, "remote ip", "1a.2 -345678901234567", "1.2345678901234"),
             Typing(Output, "qrcode server ip", "a b.4567890123456", "a b.4567890123456"),
             Typing(Output, "record server ip", "a b.4567890123456", "a b.4567890123456"),
             Typing(Output, "max palm fail cnt", "", "15"),
             Typing(User, "auto reboot time", "", "04:30"),
             Typing(Vendor, "gateway ip", "1a.2 -345678901234567", "1.2345678901234"),
             Typing(Vendor, "local port", "2", "1000"),
         }) {
        ConfigRig rig(dialog);
        rig.load("{}");
        rig.log.clear();
        QTest::keyClicks(rig.find<QWidget>(key), typed);
        QTest::keyClick(rig.find<QWidget>(key), Qt::Key_Return);
        QCOMPARE(rig.shown(key), QString(shown));
        QCOMPARE(rig.lines(), QStringList());
        QVERIFY(rig.dialog->isVisible());
    }
}

void TestConfig::setsClockAndSensor_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("request"); ///< empty: none, or it contains the time
    QTest::addColumn<QByteArray>("answer");  ///< empty: no answer
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("typed"); ///< in the box that opens; empty: it is cancelled
    const auto row = [](const char *tag, const char *button, const char *request,
                        const char *answer, const char *lines, const char *typed = "") {
        QTest::newRow(tag) << button << hex(request) << hex(answer) << lines << typed;
    };
    row("clock", "get RTC time", "EAC5 000001 06", "EAC5 000006 380305070809",
        "RTC time：2026-3-5 7:8:9");
    row("clock-silent", "get RTC time", "EAC5 000001 06", "", "Fail to get RTC.");
    row("sync", "sync RTC time", "", "EAC5 000001 00", "RTC time set succeeded.");
    row("sync-refused", "sync RTC time", "", "EAC5 000001 41",
        "Fail to set RTC time：A|RTC time set failed.");
    row("bias", "get TOF corr", "EAC5 000001 0B", "EAC5 000002 03E3", "TOF corrected value：-5");
    row("bias-unsigned", "get TOF corr", "EAC5 000001 0B", "EAC5 000002 FFFF",
        "TOF corrected value：64535");
    row("bias-silent", "get TOF corr", "EAC5 000001 0B", "", "");
    row("least-bias", "corr TOF bias", "EAC5 000003 0A 0384", "EAC5 000001 00",
        "TOF bias corrected.", "-100");
    row("greatest-bias", "corr TOF bias", "EAC5 000003 0A 04B0", "EAC5 000001 00",
        "TOF bias corrected.", "200");
    row("bias-refused", "corr TOF bias", "EAC5 000003 0A 03E9", "EAC5 000001 41",
        "Fail to set TOF correct value：A|TOF bias correct failed.", "1");
    row("bias-cancelled", "corr TOF bias", "", "", "");
    row("logs", "export logs", "", "", "Not supported for now.");
    row("reset", "reset", "", "", "Not supported for now.");
}

void TestConfig::setsClockAndSensor()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);
    QFETCH(QString, typed);
    ConfigRig rig(Vendor);
    if (!request.isEmpty())
        rig.peer.expect({request, answer.isEmpty() ? QList<QByteArray>() : QList{answer}});
    qputenv("TZ", "XYZ-9:30"); // local time is not UTC
    const QDateTime now = QDateTime::currentDateTime();
    for (int second = 0; second < 60; ++second) {
        const QDateTime time = now.addSecs(second);
        QByteArray record(1, char(time.date().year() - 1970));
        for (const QString &part : QLocale::c().toString(time, "M d h m s").split(' '))
            record += char(part.toInt());
        rig.peer.serve(hex("EAC5 000007 07") + record, answer);
    }
    std::unique_ptr<ModalDriver> user;
    if (button == "corr TOF bias")
        user = std::make_unique<ModalDriver>([&](QWidget *widget) {
            const auto *box = qobject_cast<QInputDialog *>(widget);
            QVERIFY(box);
            QCOMPARE(box->windowTitle() + box->labelText(),
                     QString("TOF corrected valueTof Bias："));
            auto *number = box->findChild<QSpinBox *>();
            const QList<int> numbers{number->value(), number->minimum(), number->maximum(),
                                     number->singleStep()};
            QCOMPARE(numbers, QList<int>({1, -100, 200, 1}));
            number->selectAll();
            QTest::keyClicks(number, typed);
            answer::click(typed.isEmpty() ? "Cancel" : "OK")(widget);
        });
    QTEST(rig.press(button), "lines");
    QCOMPARE(rig.peer.servedCount(), button == "sync RTC time" ? 1 : 0);
}

void TestConfig::setsTheClockWithinItsYears()
{
    const auto recorded = [](int year) {
        const auto record = vendorCfgDlg::clockRecord({QDate(year, 12, 31), QTime(23, 59, 58)});
        return record ? QByteArray(reinterpret_cast<const char *>(&*record), 6) : QByteArray();
    };
    QCOMPARE(recorded(1970), hex("000C1F173B3A"));
    QCOMPARE(recorded(2225), hex("FF0C1F173B3A"));
    QCOMPARE(recorded(1969), QByteArray());
    QCOMPARE(recorded(2226), QByteArray());
}

QTEST_MAIN(TestConfig)
#include "tst_config.moc"
