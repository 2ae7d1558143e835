#include "testkit/modaldriver.h"
#include "testkit/windowrig.h"
#include "version.h"
#include "widgets/controls.h"
#include "widgets/elidingcombobox.h"

#include <QAbstractItemView>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaMethod>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTcpSocket>
#include <QtTest>

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void hasItsSlotsInOrder();
    void startsUnconnected();
    void hasItsTabOrder();
    void showsItsVersion();
    void showsTextsThatDoNotFit();
    void connects();
    void reconnectsWhileListening();
    void keepsItsStateWhenConnectingFails();
    void disconnects();
    void listsDocuments_data();
    void listsDocuments();
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
    QCOMPARE(window.findChild<QSpinBox *>("idSpinBox")->minimum(), 1);

    const WindowRig rig;
    rig.click("closeBtnClickAct"); // there is no connection yet
    QCOMPARE(rig.enabledGroups(), UnconnectedGroups);
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect"));
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Start Listening"));
    QCOMPARE(rig.lines("infoText") + rig.lines("watchText"), QStringList());
}

void TestMainWindow::hasItsTabOrder()
{
    const MainWindow window;
    QCOMPARE(window.focusWidget()->objectName(), QString("openBtnClickAct"));
    QStringList way;
    const QWidget *const first = window.findChild<QComboBox *>("connectionModeCombo");
    const QWidget *next = first;
    do {
        const auto *group = qobject_cast<const QGroupBox *>(next->parentWidget());
        if (group && (next->focusPolicy() & Qt::TabFocus))
            way.append(group->title());
        next = next->nextInFocusChain();
    } while (next != first);
    way.removeDuplicates();
    QCOMPARE(way, (QStringList{"Device Connect", "Video Control", "", "User Operation", "Settings",
                               "Message Listening", "Hint"}));
}

void TestMainWindow::showsItsVersion()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QString text;
    const ModalDriver driver([&](QWidget *box) {
        text = qobject_cast<QMessageBox *>(box)->text();
        box->close();
    });
    QTest::keyClick(&window, Qt::Key_F1);
    QVERIFY2(text.startsWith("Quirel " QUIREL_VERSION "\n"), qPrintable(text));
}

void TestMainWindow::showsTextsThatDoNotFit()
{
    // In this style the lists of combo boxes are no wider than their boxes.
    const std::unique_ptr<QStyle> style(QStyleFactory::create("Windows"));
    ElidingComboBox combo;
    combo.setStyle(style.get());
    combo.addItem(QString(40, 'm'));
    combo.setFixedSize(80, 22);
    combo.show();
    QHelpEvent hint(QEvent::ToolTip, {}, {});
    QCoreApplication::sendEvent(&combo, &hint);
    QCOMPARE(combo.toolTip(), combo.itemText(0));
    combo.showPopup();
    QVERIFY(combo.view()->width() >= combo.fontMetrics().horizontalAdvance(combo.toolTip()));

    QPushButton button;
    const QString caption("Remote Recognition");
    button.setFixedWidth(button.fontMetrics().horizontalAdvance(caption) * 4 / 5);
    controls::setCaption(&button, caption);
    QVERIFY(button.fontMetrics().horizontalAdvance(caption) <= button.maximumWidth());
}

void TestMainWindow::connects()
{
    WindowRig rig;
    rig.find<QLineEdit>("hostEdit")->setText("  127.0.0.1 ");
    rig.find<QComboBox>("connectionModeCombo")->setCurrentIndex(2);
    rig.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    auto *host = rig.find<QLineEdit>("hostEdit");
    host->setFocus();
    rig.expectAnnouncement();
    QTest::keyClick(host, Qt::Key_Return);
    rig.click("exportUserInfoBtnClickAct");
    QCOMPARE(rig.lines("infoText"),
             (QStringList{"Device connected.", "Device connected.", "Not supported for now."}));
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Refresh Connect"));
    QCOMPARE(rig.enabledGroups(), AllGroups);
    QCOMPARE(rig.lines("watchText"), QStringList(AnnouncementLine));
    QCOMPARE(rig.caption("openWatchBtnClickAct"), QString("Start Listening"));

    auto *port = rig.find<QSpinBox>("portSpinBox");
    port->setFocus();
    rig.expectAnnouncement();
    QTest::keyClick(port, Qt::Key_Enter);
    QCOMPARE(rig.peer.connectionCount(), 2);
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
    pusher.write("palm seen");
    QTRY_COMPARE(rig.lines("watchText").size(), 4);
    QCOMPARE(rig.lines("watchText").constLast(), QString("Data In:palm seen"));
}

void TestMainWindow::keepsItsStateWhenConnectingFails()
{
    WindowRig rig;
    rig.find<QSpinBox>("portSpinBox")->setValue(freePort());
    rig.click("openBtnClickAct");
    const QStringList failure{"Connecting failed.", "Fail to connect the device."};
    QCOMPARE(rig.lines("infoText"), failure);
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect"));
    QCOMPARE(rig.enabledGroups(), UnconnectedGroups);
    QCOMPARE(rig.lines("watchText"), QStringList());

    rig.find<QSpinBox>("portSpinBox")->setValue(rig.peer.port());
    rig.connectToPeer();
    rig.find<QSpinBox>("portSpinBox")->setValue(freePort());
    rig.click("openBtnClickAct");
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Refresh Connect"));
    QCOMPARE(rig.enabledGroups(), AllGroups);
    rig.click("getUserListBtnClickAct");
    QCOMPARE(rig.lines("infoText"), failure + QStringList("Fail to send the data packet：-1"));
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

void TestMainWindow::listsDocuments_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("lines");
    const QStringList unreadable{"JSON parsing failed."};

    const auto users = [](const QByteArray &document, const QStringList &lines) {
        const QStringList ahead{QString("The loaded data count：%1").arg(document.size() + 1),
                                QString("Data reading succeeded：%1").arg(document.size())};
        QTest::addRow("users: %s", document.constData())
            << QByteArray("getUserListBtnClickAct") << hex("EAC5 000001 10") << document
            << ahead + lines;
    };
    users(
        R"({"user_list": [{"id": 7, "card_id": 1, "user_name": "张三", "vein_cnt": 2, "print_cnt": 1},
            {"id": "00012", "card_id": "x", "user_name": "<b>%1</b> %3", "vein_cnt": 0, "print_cnt": 3}]})",
        {"User count：2", "UID:7, username: 张三, feature count:3",
         "UID:00012, username: <b>%1</b> %3, feature count:3"});
    users(R"({"user_list": []})", {"User count：0"});
    users(R"({"users": []})", {});
    users(R"({"user_list": {"id": 1}})", {});
    users(R"({"user_list": [{}]})", {"User count：1", "UID:, username: , feature count:0"});
    users(R"({"user_list": [{"id": [1], "user_name": {}, "vein_cnt": "two", "print_cnt": 1e10}]})",
          {"User count：1", "UID:, username: , feature count:0"});
    users(R"({"user_list": [{"id": 4294967295, "vein_cnt": 2147483647, "print_cnt": 1}]})",
          {"User count：1", "UID:4294967295, username: , feature count:2147483648"});
    users(R"({"user_list": [{"id": 1}, "two"]})", unreadable);
    users(R"([{"user_list": []}])", unreadable);
    users("user_list", unreadable);

    const auto information = [](const QByteArray &document, const QStringList &lines) {
        QTest::addRow("information: %s", document.constData())
            << QByteArray("getSysInfoBtnClickAct") << hex("EAC5 000001 17") << document
            << QStringList("System info acquiring succeeded.") + lines;
    };
    information(
        R"({"mac_address": "02:00:5E:00:53:01", "max_record_num": 100000, "max_user_num": 3000,
            "qrcode_alg_version": "q3", "print_alg_version": "p2", "vein_alg_version": "v1",
            "fw_version": "1.0", "dev_serial": "KV2403abcdefghi", "dev_name": "ZT415", "other": 1})",
        {"Device Name：ZT415", "Device Serial Number：KV2403abcdefghi", "Firmware Version：1.0",
         "Vein Algorithm Version：v1", "Print Algorithm Version：p2",
         "QrCode Algorithm Version：q3", "System User Volume：3000", "System Record Volume：100000",
         "MAC Address：02:00:5E:00:53:01"});
    information(R"({"dev_name": null, "max_user_num": null, "mac_address": null})", {});
    information(R"({"dev_name": {}, "max_user_num": "3000", "mac_address": 5})", {});
    information(R"({"dev_name": 5})", {"Device Name：5"});
    information("{\"dev_name\": \"caf\xE9\", \"mac_address\": \"\xB5\"}",
                {"Device Name：café", "MAC Address：µ"});
    information(R"({"mac_address": "02\u000003"})", {"MAC Address：02"});
    information(R"({"dev_name": "<b>%1</b>"})", {"Device Name：<b>%1</b>"});
    information(R"({"max_user_num": 4294967295, "max_record_num": 0})",
                {"System User Volume：4294967295", "System Record Volume：0"});
    information(R"({"max_user_num": 4294967296, "max_record_num": -1})", {});
    information("dev_name", unreadable);
    information(R"([{"dev_name": "x"}])", unreadable);
}

void TestMainWindow::listsDocuments()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, document);
    WindowRig rig;
    rig.connectToPeer();
    rig.peer.expect({request, {head(document.size() + 1) + '\0' + document}});
    rig.click(button);
    QTEST(rig.lines("infoText"), "lines");
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
