#include "windowrig.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMetaMethod>
#include <QSpinBox>
#include <QTcpSocket>
#include <QtTest>

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void hasItsSlotsInOrder();
    void startsUnconnected();
    void connects();
    void reconnectsWhileListening();
    void failsToConnect();
    void keepsItsStateWhenReconnectingFails();
    void disconnects();
    void listensOnTheTypedPort();
    void listsUsers_data();
    void listsUsers();
    void clearsEachLog();
};

namespace {

const QStringList AllGroups{"Device Connect", "Hint",           "Message Listening",
                            "Settings",       "User Operation", "Video Control"};
const QStringList UnconnectedGroups{"Device Connect", "Hint"};
const char AnnouncementLine[] = "Local Address：127.0.0.1: 60086";

} // namespace

void TestMainWindow::hasItsSlotsInOrder()
{
    const char expected[] =
        "irImgLabelMouseMoved irImgLabelMousePressed rgbImgLabelMouseMoved "
        "rgbImgLabelMousePressed update_task setImgUpdateState showRgbBtnClickAct "
        "showIrBtnClickAct showMixBtnClickAct saveRgbPngBtnClickAct saveIrPngBtnClickAct "
        "saveMixPngBtnClickAct saveRgbRawBtnClickAct saveIrRawBtnClickAct "
        "saveMixRawBtnClickAct clearWatchTextBtnClickAct openWatchBtnClickAct "
        "clearInfoTextBtnClickAct addUserBtnClickAct enrollBtnClickAct recgBtnClickAct "
        "getTofDistBtnClickAct idealBtnClickAct getModeBtnClickAct delUserBtnClickAct "
        "getUserListBtnClickAct exportUserInfoBtnClickAct clearUserBtnClickAct "
        "remoteEnrollBtnClickAct clearUserFeatBtnClickAct importFeatureBtnClickAct "
        "getSysInfoBtnClickAct manuCfgBtnClickAct restartBtnClickAct sysCfgBtnClickAct "
        "recordBtnClickAct rebootBtnClickAct devCfgAct qrcodeBtnClickAct openBtnClickAct "
        "closeBtnClickAct enableConnAct disableConnAct";
    const QMetaObject &meta = MainWindow::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(QString::fromLatin1(meta.method(i).name()));
    QCOMPARE(names.join(' '), QString(expected));
}

void TestMainWindow::startsUnconnected()
{
    const MainWindow window;
    const auto *port = window.findChild<QSpinBox *>("portSpinBox");
    QCOMPARE(window.findChild<QLineEdit *>("hostEdit")->text(), QString("192.168.31.5"));
    QCOMPARE(window.findChild<QLineEdit *>("watchPortEdit")->text(), QString("60086"));
    QCOMPARE(window.findChild<QComboBox *>("connectionModeCombo")->currentText(),
             QString("Ethernet"));
    QCOMPARE(port->text(), QString("20086"));
    QCOMPARE(port->maximum(), 65535);
    QCOMPARE(window.windowTitle(), QString("Quirel"));
    QCOMPARE(window.minimumSize(), window.maximumSize());

    const WindowRig rig;
    rig.click("closeBtnClickAct"); // nothing to disconnect yet
    QCOMPARE(rig.enabledGroups(), UnconnectedGroups);
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect"));
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Start Listening"));
    QCOMPARE(rig.lines("infoText") + rig.lines("watchText"), QStringList());
}

void TestMainWindow::connects()
{
    WindowRig rig;
    rig.find<QLineEdit>("hostEdit")->setText("  127.0.0.1 ");
    rig.find<QComboBox>("connectionModeCombo")->setCurrentIndex(2);
    rig.expectAnnouncement();
    rig.click("openBtnClickAct");
    QCOMPARE(rig.lines("infoText"), (QStringList{"Device connected.", "Device connected."}));
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Refresh Connect"));
    QCOMPARE(rig.enabledGroups(), AllGroups);
    QCOMPARE(rig.lines("watchText"), QStringList(AnnouncementLine));
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Start Listening"));
}

void TestMainWindow::reconnectsWhileListening()
{
    WindowRig rig;
    rig.connectToPeer();
    const quint16 port = freePort();
    rig.find<QLineEdit>("watchPortEdit")->setText(QString::number(port));
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Stop Listening"));
    QVERIFY(rig.peer.isDone());

    rig.expectAnnouncement();
    rig.click("openBtnClickAct");
    QCOMPARE(rig.peer.connectionCount(), 2);
    QCOMPARE(rig.lines("infoText"), (QStringList{"Device connected.", "Device connected."}));
    QCOMPARE(rig.lines("watchText"), (QStringList{AnnouncementLine, AnnouncementLine}));
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Stop Listening"));
    QTcpSocket pusher;
    pusher.connectToHost("127.0.0.1", port);
    QTRY_COMPARE(pusher.state(), QAbstractSocket::ConnectedState);
}

void TestMainWindow::failsToConnect()
{
    WindowRig rig;
    rig.find<QSpinBox>("portSpinBox")->setValue(freePort());
    rig.click("openBtnClickAct");
    QCOMPARE(rig.lines("infoText"),
             (QStringList{"Connecting failed.", "Fail to connect the device."}));
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect"));
    QCOMPARE(rig.enabledGroups(), UnconnectedGroups);
    QCOMPARE(rig.lines("watchText"), QStringList());
}

void TestMainWindow::keepsItsStateWhenReconnectingFails()
{
    WindowRig rig;
    rig.connectToPeer();
    rig.find<QSpinBox>("portSpinBox")->setValue(freePort());
    rig.click("openBtnClickAct");
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Refresh Connect"));
    QCOMPARE(rig.enabledGroups(), AllGroups);
    rig.click("getUserListBtnClickAct");
    QCOMPARE(rig.lines("infoText"),
             (QStringList{"Connecting failed.", "Fail to connect the device.",
                          "Fail to send the data packet：-1"}));
}

void TestMainWindow::disconnects()
{
    WindowRig rig;
    rig.connectToPeer();
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");
    rig.click("closeBtnClickAct");
    rig.click("closeBtnClickAct");
    QCOMPARE(rig.lines("infoText"),
             (QStringList{"The connection is abandoned.", "The connection has been abandoned."}));
    QCOMPARE(rig.enabledGroups(), UnconnectedGroups);
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect"));
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Start Listening"));
}

void TestMainWindow::listensOnTheTypedPort()
{
    WindowRig rig;
    rig.connectToPeer();
    const quint16 port = freePort();
    rig.find<QLineEdit>("watchPortEdit")->setText(QString::number(port));
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");

    QTcpSocket pusher;
    pusher.connectToHost("127.0.0.1", port);
    pusher.write("palm seen");
    QTRY_COMPARE(rig.lines("watchText").size(), 3);
    QCOMPARE(rig.lines("watchText").constFirst(), QString(AnnouncementLine));
    QCOMPARE(rig.lines("watchText").constLast(), QString("Data In:palm seen"));
}

void TestMainWindow::listsUsers_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("lines");

    const auto row = [](const char *name, const QByteArray &document, const QStringList &lines) {
        QTest::newRow(name) << document << lines;
    };
    const QStringList unreadable{"JSON parsing failed."};

    row("users",
        R"({"user_list": [{"id": 7, "card_id": 1, "user_name": "张三", "vein_cnt": 2, "print_cnt": 1},
            {"id": "00012", "card_id": "x", "user_name": "<b>%1</b> %3", "vein_cnt": 0, "print_cnt": 3}]})",
        {"User count：2", "UID:7, username: 张三, feature count:3",
         "UID:00012, username: <b>%1</b> %3, feature count:3"});
    row("no-users", R"({"user_list": []})", {"User count：0"});
    row("no-list", R"({"users": []})", {});
    row("list-is-object", R"({"user_list": {"id": 1}})", {});
    row("list-is-text", R"({"user_list": "none"})", {});
    row("list-is-null", R"({"user_list": null})", {});
    row("entry-without-members", R"({"user_list": [{}]})",
        {"User count：1", "UID:, username: , feature count:0"});
    row("entry-of-wrong-kinds",
        R"({"user_list": [{"id": [1], "user_name": {}, "vein_cnt": "two", "print_cnt": 1e10}]})",
        {"User count：1", "UID:, username: , feature count:0"});
    row("entry-of-numbers",
        R"({"user_list": [{"id": 4294967295, "user_name": 5, "vein_cnt": 2147483647, "print_cnt": 1}]})",
        {"User count：1", "UID:4294967295, username: 5, feature count:2147483648"});
    row("entry-is-text", R"({"user_list": [{"id": 1}, "two"]})", unreadable);
    row("entry-is-null", R"({"user_list": [null]})", unreadable);
    row("root-is-array", R"([{"user_list": []}])", unreadable);
    row("no-text", "", unreadable);
    row("nested-too-deeply", QByteArray(100000, '['), unreadable);
}

void TestMainWindow::listsUsers()
{
    QFETCH(QByteArray, document);
    QFETCH(QStringList, lines);

    WindowRig rig;
    rig.connectToPeer();
    rig.peer.expect({hex("EAC5 000001 10"), {head(document.size() + 1) + '\0' + document}});
    rig.click("getUserListBtnClickAct");
    lines.prepend(QString("Data reading succeeded：%1").arg(document.size()));
    lines.prepend(QString("The loaded data count：%1").arg(document.size() + 1));
    QCOMPARE(rig.lines("infoText"), lines);
}

void TestMainWindow::clearsEachLog()
{
    WindowRig rig;
    rig.expectAnnouncement();
    rig.click("openBtnClickAct");
    rig.click("clearInfoTextBtnClickAct");
    QCOMPARE(rig.lines("infoText"), QStringList());
    QCOMPARE(rig.lines("watchText"), QStringList(AnnouncementLine));
    rig.click("exportUserInfoBtnClickAct");
    rig.click("clearWatchTextBtnClickAct");
    QCOMPARE(rig.lines("infoText"), QStringList("Not supported for now."));
    QCOMPARE(rig.lines("watchText"), QStringList());
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
