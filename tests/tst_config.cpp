#include "config/outputcfgdlg.h"
#include "config/usercfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "data/wholefile.h"
#include "testkit/dialogrig.h"
#include "testkit/modaldriver.h"

#include <QComboBox>
#include <QScrollBar>
#include <QtTest>

#include <filesystem>
#include <sys/stat.h>

class TestConfig : public QObject
{
    Q_OBJECT

private slots:
    void showsValues_data();
    void showsValues();
    void loadsAndSets_data();
    void loadsAndSets();
    void exportsAndImports_data();
    void exportsAndImports();
    void describesTheMode();
    void usesClockAndSensor();
};

namespace {

const QByteArray Ok = hex("EAC5 000001 00");

/// A dialog with the codes of its commands and its log lines.
struct Dialog
{
    const char *name;
    MakeWindow make;
    const char *getCode;
    const char *setCode;
    const char *loaded;
    const char *unparsed;
    const char *issued;
    const char *saved;
    const char *notSaved;
    const char *notOpened;
};
constexpr Dialog Dialogs[] = {
    {"output", makeDialog<OutputCfgDlg>, "1A", "1B", "Cfg file loaded：%1", "json parsing failed.",
     "Cfg data issued.", "File save to %1", "Fail to save the file：%1",
     "Fail to open the file:%1"},
    {"user", makeDialog<UserCfgDlg>, "16", "15", "Cfg file loaded：%1", "json parsing failed",
     "Cfg data issued.", "File saved to %1", "Fail to save file：%1", "Fail to open file:%1"},
    {"vendor", makeDialog<vendorCfgDlg>, "18", "19", "cfg file loaded：%1", "json parsing failed.",
     "Cfg data issued", "File saved to %1", "Fail to save file：%1", "Fail to open file:%1"},
};

struct ConfigRig : DialogRig
{
    explicit ConfigRig(const Dialog &its)
        : DialogRig(its.make),
          words(its)
    {
    }
    /// Takes the initial of the dialog's name.
    explicit ConfigRig(char initial)
        : ConfigRig(Dialogs[QByteArray("ouv").indexOf(initial)])
    {
    }

    QString get(const char *button, const QByteArray &document)
    {
        return press(button, head(1) + hex(words.getCode), replyWith(document));
    }
    /// Loads the document and returns the log lines behind the first, which is always the same.
    QStringList load(const QByteArray &document)
    {
        const QStringList loaded = get("Load", document).split('|');
        if (loaded[0] != QString(words.loaded).arg(document.size()))
            drive::fail(loaded[0]);
        return loaded.mid(1);
    }
    QString send(const char *button, const QByteArray &document, const QByteArray &reply = Ok)
    {
        return press(button, head(document.size() + 1) + hex(words.setCode) + document, reply);
    }
    QString shown(const QByteArray &key) const
    {
        const auto *control = find<QWidget>(key);
        const QVariant choice = control->property("currentText");
        return (choice.isValid() ? choice : control->property("text")).toString();
    }

    const Dialog &words;
};

} // namespace

void TestConfig::showsValues_data()
{
    QTest::addColumn<QStringList>("values"); ///< "value=shown", or a value that is refused
    QTest::addColumn<QStringList>("wrong");  ///< log line for a refused value
    QTest::addColumn<QString>("typed");      ///< text after typing "1a.2 -3"; null: any

    /// The tag has keys that behave alike, each behind the initial of its dialog. The last value is
    /// also the one that is shown at first.
    const auto row = [](const char *tag, const QString &values, const QString &wrong = {},
                        const QString &typed = {}) {
        QTest::newRow(tag) << ("[1]|" + values).split('|') << wrong.split('|', Qt::SkipEmptyParts)
                           << typed;
    };
    const auto texts = [](int length) {
        return '"' + QString(40, '1') + "\"=" + QString(length, '1') + "|\"\"=";
    };
    row("o sys mode",
        "4=Remote Feat. Mode|1=Background Mode|2=Gate&Visitor Mode|3=Remote Image Mode|"
        "10=Recorder Mode|5|9|11|-1|0=Stand-alone Mode",
        "Wrong parameter of system mode.");
    row("o sys http version", "9=|2=|1=V1.1 Custom|10|-1|0=V1.0 General");
    row("o palm recg mode", "3=|2=vein & print|1=palmprint|4|-1|0=palm vein",
        "Wrong data of recognition mode.");
    row("o max palm fail cnt", "1=3|29=20|0|30|-1|15=15",
        "Wrong parameter of max recognition count.");
    row("o card forward type", "2=RS485 & Wiegand|1=Wiegand|3|-1|0=RS485",
        "Wrong data of card pass-through mode.");
    row("o fake detect, o use card, o use qrcode, o record upload func, o rs485 output res func, "
        "o relay output func, o wegen output func, v remote enroll func",
        "-1=open|0=close|5=open|0=close");
    row("o detect similar hand, u detect similar hand, u auto reboot", "1=open|2|-1|0=close");
    row("o qrcode server port", "65536=65535|2000=2000|-5=1000");
    row("o qrcode forward type", "1=TCP/IP|2|-1|0=RS485");
    row("o record server port", "65537=65536|2000=2000|-5=1000");
    row("o record server protocal", "-1=HTTP|0=TCP|1=HTTP|0=TCP");
    row("o rs485 output type", "2=用户名|1=卡号|3|-1|0=用户ID");
    row("o weigen type", "1=26|2|-1|0=34");
    row("o weigen content", "1=card number|2|-1|0=user ID");
    row("u recg mode", "3=vein or print|2=vein & print|1=palmprint|4|-1|0=palm vein",
        "Wrong authentication mode data");
    row("u use qrcode", "2=pass-through|1=open|3|-1|0=close", "Wrong QR code parameter data");
    row("o remote port", "1=1000|65535=65535|0|65536|-1|18080=18080");
    row("u remote port", "1=1|65535=65535|0|65536|-1|18080=18080");
    row("u local port", "1=1|65535=65535|0|65536|-1|20086=20086");
    row("v local port", "65535=65535|0|65536|-1|1=1000", "", "1000");
    row("v auto reboot", "0=close|2|-1|1=open");
    row("u auto reboot time, v auto reboot time", "0=00:00|1439=23:59|61=01:01|1440|-1|270=04:30");
    row("u user dev type, v user dev type", "1=out|2|-1|0=in");
    row("v sound volume", "31=31|32|-1|0=0", "Wrong volume data.");
    row("o remote ip, v local ip, v gateway ip", texts(15), "", "1.23");
    row("u remote ip, u local ip, u gateway ip", texts(40), "", "1.23");
    row("o qrcode server ip, o record server ip", texts(40), "", "1a.2 -3");
    row("v manufacture name, v dev notes, v dev location desc", texts(32), "", "1a.2 -3");
}

// The document has the key in every block. The Enter key presses no button: the peer would report
// a request.
void TestConfig::showsValues()
{
    QFETCH(QStringList, values);
    QFETCH(QStringList, wrong);
    QFETCH(QString, typed);
    for (const QString &key : QString(QTest::currentDataTag()).split(", ")) {
        ConfigRig rig(key[0].toLatin1());
        const QByteArray name = key.mid(2).toLatin1();
        auto *control = rig.find<QWidget>(name);
        QCOMPARE(rig.load("[{}]"), QStringList(rig.words.unparsed));
        QCOMPARE(control->isEnabled(), key[0] == 'u');
        QString shown = values.last().section('=', 1);
        QCOMPARE(rig.shown(name), shown);
        for (const QString &value : values) {
            const QString document =
                R"({%1,"data block":{%1},"recg info block":{%1},)"
                R"("cfg output block":{%1},"dev info":{%1},"work param":{%1}})";
            const QString member = '"' + name + "\":" + value.section('=', 0, 0);
            const QStringList lines = rig.load(document.arg(member).toUtf8());
            const bool isAccepted = value.contains('=');
            shown = isAccepted ? value.section('=', 1) : shown;
            QCOMPARE(QStringList({key, value, rig.shown(name)}) + lines,
                     QStringList({key, value, shown}) + (isAccepted ? QStringList() : wrong));
        }
        QTest::keyClick(control, Qt::Key_Return);
        if (!typed.isNull())
            QTest::keyClicks(control, "1a.2 -3");
        QCOMPARE(rig.shown(name), typed.isNull() ? shown : typed);
    }
}

void TestConfig::loadsAndSets_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QByteArray>("sent");
    /// In a form, ' stands for ", / for a line break and > for a tab. Without a document, the form
    /// is also what is loaded. There, one text has a last character that exceeds its limit in the
    /// middle, so that it is not sent.
    const auto row = [](const char *tag, QByteArray form, const QByteArray &document = {}) {
        form.replace('\'', '"').replace('/', '\n').replace('>', '\t');
        const QByteArray same = QByteArray(form).replace("01\"", "01😀\"");
        QTest::newRow(tag) << (document.isEmpty() ? same : document) << form;
    };
    row("output",
        "{/>'cfg output block' : />{/>>'record server ip' : '255.255.255.255',"
        "/>>'record server port' : 65536,/>>'record server protocal' : 1,"
        "/>>'record upload func' : 1,/>>'relay output func' : 1,/>>'rs485 output res func' : 1,"
        "/>>'rs485 output type' : 2,/>>'wegen output func' : 1,/>>'weigen content' : 1,"
        "/>>'weigen type' : 1/>},/>'data block' : />{/>>'remote ip' : '1..2.3',"
        "/>>'remote port' : 2000,/>>'sys http version' : 1,/>>'sys mode' : 10/>},"
        "/>'recg info block' : />{/>>'card forward type' : 2,/>>'detect similar hand' : 1,"
        "/>>'fake detect' : 1,/>>'max palm fail cnt' : 9,/>>'palm recg mode' : 2,"
        "/>>'qrcode forward type' : 1,/>>'qrcode server ip' : 'a.b.c.d',"
        "/>>'qrcode server port' : 3000,/>>'use card' : 1,/>>'use qrcode' : 1/>}/}");
    row("user",
        "{/>'auto reboot' : 1,/>'auto reboot time' : 61,/>'detect similar hand' : 1,"
        "/>'gateway ip' : '1.1.1.1',/>'local ip' : '1.1.1.2',/>'local port' : 2,/>'recg mode' : 3,"
        "/>'remote ip' : '1.1.1.3',/>'remote port' : 3,/>'use qrcode' : 2,/>'user dev type' : 1/}");
    row("vendor",
        "{/>'dev info' : />{/>>'dev location desc' : 'a',"
        "/>>'dev notes' : '1234567890123456789012345678901',/>>'manufacture name' : '张三',"
        "/>>'sound volume' : 31,/>>'user dev type' : 1/>},/>'sys set' : null,"
        "/>'work param' : />{/>>'auto reboot' : 0,/>>'auto reboot time' : 1439,"
        "/>>'gateway ip' : '10.0.0.1',/>>'local ip' : '10.0.0.2',/>>'local port' : 2000,"
        "/>>'remote enroll func' : 1/>}/}");
    row("user-refused-values",
        "{/>'auto reboot' : 0,/>'auto reboot time' : 270,/>'detect similar hand' : 0,"
        "/>'local port' : 20086,/>'recg mode' : 0,/>'remote port' : 9,/>'use qrcode' : 0,"
        "/>'user dev type' : 0/}",
        R"({"recg mode": 4, "local ip": "1.2.3.4.5", "gateway ip": "256.1.1.1",
            "remote ip": "1.-1.1.1", "remote port": 9})");
}

void TestConfig::loadsAndSets()
{
    QFETCH(QByteArray, document);
    QFETCH(QByteArray, sent);
    ConfigRig rig(QTest::currentDataTag()[0]);
    rig.load(document);
    QCOMPARE(rig.load("null"), QStringList());
    QCOMPARE(rig.send("Set", sent), QString(rig.words.issued));
    QCOMPARE(rig.send("Set", sent, hex("EAC5 000001 41")), QString("Unknown error."));
}

void TestConfig::exportsAndImports_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < 3; ++i)
        QTest::newRow(Dialogs[i].name) << i;
}

void TestConfig::exportsAndImports()
{
    QFETCH(int, index);
    ConfigRig rig(Dialogs[index]);
    const QString path =
        QCoreApplication::applicationDirPath() + QString("/zt415_%1.cfg").arg(rig.words.name);
    const auto removeFile = [&path] { std::filesystem::remove_all(path.toStdString()); };
    const auto choose = answer::file(path);
    const ModalDriver driver({choose, choose, choose, answer::close(), [&](QWidget *box) {
                                  choose(box);
                                  removeFile();
                                  mkfifo(qPrintable(path), S_IRUSR); // a pipe without a writer
                              }});
    QVERIFY(writeWholeFile(path, "a longer file"));
    const QByteArray content = hex("00FF0D0A257B");
    const QString loaded = "File loaded：6|";
    QCOMPARE(rig.get("Export", content), loaded + QString(rig.words.saved).arg(path));
    QCOMPARE(contentOf(path), content);
    QCOMPARE(rig.send("Import", content), QString("Cfg file issued."));
    const QByteArray longest(65530, 'x');
    QVERIFY(writeWholeFile(path, longest));
    QCOMPARE(rig.send("Import", longest), QString("Cfg file issued."));
    QVERIFY(writeWholeFile(path, longest + 'x'));
    QCOMPARE(rig.press("Import"), QString("The data is too long for one packet."));
    QCOMPARE(rig.press("Import"), QString()); // cancelled
    QCOMPARE(rig.press("Import"), QString(rig.words.notOpened).arg(path));
    removeFile();
    QVERIFY(QDir().mkpath(path));
    QCOMPARE(rig.get("Export", content), loaded + QString(rig.words.notSaved).arg(path));
    removeFile();
}

void TestConfig::describesTheMode()
{
    const ConfigRig rig('o');
    const auto *box = rig.find<QTextEdit>("description");
    auto *modes = rig.find<QComboBox>("sys mode");
    for (const char *part : {"only allows", "data are obtained", "through the remote server",
                             "image acquisition", "feature collection", "recorder"}) {
        QVERIFY2(box->toPlainText().contains(part), part);
        QCOMPARE(box->verticalScrollBar()->maximum(), 0);
        modes->setCurrentIndex(modes->currentIndex() + 1);
    }
    QCOMPARE(box->toPlainText(), QString()); // no mode
}

void TestConfig::usesClockAndSensor()
{
    qputenv("TZ", "XYZ-9:30"); // local time is not UTC
    ConfigRig rig('v');
    const QDateTime now = QDateTime::currentDateTime();
    for (int second = 0; second < 60; ++second) {
        const QDateTime time = now.addSecs(second);
        QByteArray record(1, char(time.date().year() - 1970));
        for (const QString &part : QLocale::c().toString(time, "M d h m s").split(' '))
            record += char(part.toInt());
        rig.peer.serve(hex("EAC5 000007 07") + record, Ok);
    }
    QCOMPARE(rig.press("sync RTC time"), QString("RTC time set succeeded."));
    QVERIFY(!vendorCfgDlg::clockRecord({QDate(2226, 1, 1), QTime(0, 0)}));
    QCOMPARE(rig.press("get RTC time", hex("EAC5 000001 06"), hex("EAC5 000006 380305070809")),
             QString("RTC time：2026-3-5 7:8:9"));
    QCOMPARE(rig.press("get TOF corr", hex("EAC5 000001 0B"), hex("EAC5 000002 FFFF")),
             QString("TOF corrected value：64535"));
    const ModalDriver driver({answer::number(-100), answer::close()});
    QCOMPARE(rig.press("corr TOF bias", hex("EAC5 000003 0A 0384"), hex("EAC5 000001 41")),
             QString("Fail to set TOF correct value：A|TOF bias correct failed."));
    QCOMPARE(rig.press("corr TOF bias"), QString());

    rig.client.disconnectFromDevice();
    const QString unsent = "Fail to send the data packet：-1|";
    QCOMPARE(rig.press("sync RTC time"), unsent + "RTC time set failed.");
    QCOMPARE(rig.press("get RTC time"), unsent + "Fail to get RTC.");
}

QTEST_MAIN(TestConfig)
#include "tst_config.moc"
