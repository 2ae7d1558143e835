#include "app/language.h"
#include "dialogs/adduserdlg.h"
#include "dialogs/qrcodedialog.h"
#include "dialogs/remoteenrolldlg.h"
#include "dialogs/setsysinfodlg.h"
#include "testkit/modaldriver.h"
#include "testkit/windowrig.h"
#include "version.h"
#include "widgets/controls.h"
#include "widgets/elidingcombobox.h"

#include <QAbstractItemView>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QHelpEvent>
#include <QMetaMethod>
#include <QStyleFactory>
#include <QTcpSocket>
#include <QtTest>

/// What takes several steps in the main window and in its dialogs.
class TestConsole : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { useLanguage(); }
    void cleanup() { remote().removeRecursively(); }
    void declaresItsSlotsInOrder();
    void opensReadyToConnect();
    void showsItsVersion();
    void showsTextsThatDoNotFit();
    void connectsAndDisconnects();
    void keepsItsStateWhenConnectingFails();
    void previewsAnEnrollment();
    void loadsARemoteEnrollment_data();
    void loadsARemoteEnrollment();
    void limitsTypedText();
    void generatesASerialNumber();

private:
    static QDir remote() { return QCoreApplication::applicationDirPath() + "/remote"; }
};

namespace {

const char AllGroups[] =
    "Device Connect|Hint|Message Listening|Settings|User Operation|Video Control";

/// Returns the captions of the connection and the listener and the usable groups.
QString stateOf(const WindowRig &rig)
{
    const QStringList captions{rig.caption("openBtnClickAct"), rig.caption("openWatchBtnClickAct")};
    return captions.join('|') + ": " + rig.enabledGroups().join('|');
}

/// Returns two pictures side by side: their first rows, their second rows and so on.
QByteArray sideBySide(const QByteArray &left, const QByteArray &right)
{
    QByteArray rows;
    for (int start = 0; start < left.size(); start += 540)
        rows += left.mid(start, 540) + right.mid(start, 540);
    return rows;
}

} // namespace

void TestConsole::declaresItsSlotsInOrder()
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

void TestConsole::opensReadyToConnect()
{
    const MainWindow window;
    QCOMPARE(window.focusWidget()->objectName(), QString("openBtnClickAct"));
    QStringList values;
    for (const char *field : {"connectionModeCombo", "hostEdit", "portSpinBox", "watchPortEdit"})
        values << drive::value(&window, field).toString();
    QCOMPARE(values.join(' '), QString("Ethernet 192.168.31.5 20086 60086"));
    QStringList tabOrder;
    const QWidget *widget = window.findChild<QWidget *>("connectionModeCombo");
    for (int i = window.findChildren<QWidget *>().size(); i > 0; --i) {
        const auto *group = qobject_cast<const QGroupBox *>(widget->parentWidget());
        if (group && (widget->focusPolicy() & Qt::TabFocus))
            tabOrder << group->title();
        widget = widget->nextInFocusChain();
    }
    tabOrder.removeDuplicates();
    QCOMPARE(
        tabOrder.join('|'),
        QString("Device Connect|Video Control||User Operation|Settings|Message Listening|Hint"));
}

void TestConsole::showsItsVersion()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const ModalDriver driver([](QWidget *box) {
        QVERIFY(box->property("text").toString().startsWith("Quirel " QUIREL_VERSION "\n"));
        box->close();
    });
    QTest::keyClick(&window, Qt::Key_F1);
}

void TestConsole::showsTextsThatDoNotFit()
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

void TestConsole::connectsAndDisconnects()
{
    WindowRig rig;
    drive::setValue(&rig.window, "hostEdit", "  127.0.0.1 ");
    rig.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    const auto connectBy = [&rig](Qt::Key key, const char *field) {
        rig.find<QWidget>(field)->setFocus();
        rig.expectAnnouncement(); // even if the listener does not run
        QTest::keyClick(rig.find<QWidget>(field), key);
    };
    connectBy(Qt::Key_Return, "hostEdit");
    QCOMPARE(stateOf(rig), QString("Refresh Connect|Start Listening: ") + AllGroups);

    const quint16 listenerPort = freePort();
    drive::setValue(&rig.window, "watchPortEdit", listenerPort);
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");
    connectBy(Qt::Key_Enter, "portSpinBox");
    QCOMPARE(rig.peer.connectionCount(), 2);
    QCOMPARE(stateOf(rig), QString("Refresh Connect|Stop Listening: ") + AllGroups);
    QTcpSocket pusher;
    pusher.connectToHost("127.0.0.1", listenerPort);
    pusher.write("palm seen");
    QTRY_COMPARE(rig.lines("watchText").constLast(), QString("Data In:palm seen"));
    QCOMPARE(rig.lines("watchText").filter("Local Address：127.0.0.1: 60086").size(), 3);

    rig.click("clearInfoTextBtnClickAct");
    rig.click("closeBtnClickAct");
    rig.click("closeBtnClickAct");
    QCOMPARE(rig.lines("infoText").join('|'),
             QString("The connection is abandoned.|The connection has been abandoned."));
    QCOMPARE(stateOf(rig), QString("Connect|Start Listening: Device Connect|Hint"));
}

void TestConsole::keepsItsStateWhenConnectingFails()
{
    WindowRig rig;
    const auto failToConnect = [&rig] {
        drive::setValue(&rig.window, "portSpinBox", freePort());
        rig.click("openBtnClickAct");
    };
    failToConnect();
    const QString failure = "Connecting failed.|Fail to connect the device.";
    QCOMPARE(rig.lines("infoText").join('|'), failure);
    QCOMPARE(stateOf(rig), QString("Connect|Start Listening: Device Connect|Hint"));

    drive::setValue(&rig.window, "portSpinBox", rig.peer.port());
    rig.connectToPeer();
    failToConnect();
    QCOMPARE(stateOf(rig), QString("Refresh Connect|Start Listening: ") + AllGroups);
    rig.click("getUserListBtnClickAct");
    QCOMPARE(rig.lines("infoText").join('|'), failure + "|Fail to send the data packet：-1");
}

void TestConsole::previewsAnEnrollment()
{
    WindowRig rig;
    rig.connectToPeer();
    rig.servePictures();
    drive::setValue(&rig.window, "idSpinBox", 65536);
    const auto enroll = [&rig](bool accepted, const QString &caption) {
        const QByteArray reply = hex(accepted ? "EAC5 000001 00" : "EAC5 000001 02");
        rig.peer.expect({hex("EAC5 000006 04 01 00010000"), {reply}});
        rig.click("enrollBtnClickAct");
        QCOMPARE(rig.lines("infoText").constLast(),
                 QString(accepted ? "The input instruction has been sent successfully. Please "
                                    "complete the input process according to the prompts."
                                  : "Enrollment failed."));
        QCOMPARE(rig.caption("showIrBtnClickAct"), caption);
        QCOMPARE(rig.isUsable("showMixBtnClickAct"), caption == "palm vein preview");
        QCOMPARE(drive::value(&rig.window, "modeCombo"), QVariant("Enroll"));
    };
    enroll(false, "palm vein preview");
    enroll(true, "stop collecting");
    enroll(true, "stop collecting");
    enroll(false, "palm vein preview");
    enroll(false, "stop collecting");
}

// A row is named by the replies ('.': data, 'r': a refusal, '-': none) and by a folder in remote/
// that is in the way of a file; with "..", remote/ does not exist.
void TestConsole::loadsARemoteEnrollment_data()
{
    QTest::addColumn<QStringList>("lines");
    QStringList whole;
    for (const char number : {'1', '2', '3', '4', '5'})
        whole << QString("read the %1th image").arg(number)
              << QString("Firmware saved：%1/remote_img%2.raw").arg(remote().path()).arg(number);
    whole << "Features loaded."
          << "Features saved：" + remote().filePath("remote_feat.bin");
    const QStringList refused("Wrong parameter.");
    QTest::newRow("......") << whole;
    QTest::newRow("-.....") << QStringList("Fail to accept ACK.") + whole.mid(2);
    QTest::newRow(".r...r") << whole.mid(0, 2) + refused + whole.mid(4, 6) + refused;
    QTest::newRow(". ..") << QStringList{whole[0], "Fail to save the image."};
    QTest::newRow("...... remote_feat.bin")
        << whole.mid(0, 11) + QStringList("Fail to save the features.");
}

void TestConsole::loadsARemoteEnrollment()
{
    QFETCH(QStringList, lines);
    const QString replies = QString(QTest::currentDataTag()).section(' ', 0, 0);
    const QString obstacle = QString(QTest::currentDataTag()).section(' ', 1);
    QVERIFY(obstacle == ".." || QDir().mkpath(remote().filePath(obstacle)));
    const QByteArray features = frame(9).left(10240);
    DialogRig rig(makeDialog<RemoteEnrollDlg>);
    for (int i = 0; i < replies.size(); ++i) {
        const QByteArray request =
            i < 5 ? hex("EAC5 000006 27 000000FF") + char(i) : hex("EAC5 000005 28 000000FF");
        QByteArray reply = replyWith(i < 5 ? frame(i) + frame(i + 5) : features);
        if (replies[i] != '.')
            reply = replies[i] == 'r' ? hex("EAC5 000001 02") : QByteArray();
        rig.peer.expect({request, {reply}});
    }
    rig.click("readBtnClickAct");
    QCOMPARE(rig.lines(), lines);
    // The dialog connects again, since a late picture could arrive on the old connection.
    QCOMPARE(rig.peer.connectionCount(), replies.contains('-') ? 2 : 1);

    const QStringList saved = lines.filter("saved：");
    QCOMPARE(remote().entryList(QDir::Files).size(), saved.size());
    for (const QString &line : saved) {
        const int i = line.midRef(line.size() - 5, 1).toInt() - 1; // -1: the features
        const QByteArray content = i < 0 ? features : sideBySide(frame(i), frame(i + 5));
        QVERIFY(contentOf(line.section("：", 1)) == content);
    }
}

void TestConsole::limitsTypedText()
{
    const DialogRig user(makeDialog<AddUserDlg>);
    drive::type(user.dialog.get(), "cardEdit", "1a-2 345678901");
    QCOMPARE(user.value("cardEdit"), QVariant("1234567890"));
    const DialogRig settings(makeDialog<setSysInfoDlg>);
    drive::type(settings.dialog.get(), "serialEdit", "KV-24_03 abcDEF789xyz");
    QTest::keyClick(settings.find<QWidget>("serialEdit"), Qt::Key_Return); // presses no button
    QCOMPARE(settings.value("serialEdit"), QVariant("KV2403abcDEF789"));
    const DialogRig codes(makeDialog<QRCodeDialog>);
    for (const auto &[edit, minimum] : {std::pair("start_time_edit", "2000-09-14T00:00:00Z"),
                                        std::pair("end_time_edit", "2000-01-01T00:00:00Z")}) {
        const auto *times = codes.find<QDateTimeEdit>(edit);
        QCOMPARE(times->minimumDateTime().toString(Qt::ISODate), QString(minimum));
        QCOMPARE(times->dateTime().toString(Qt::ISODate), QString("2023-08-14T00:00:00Z"));
        QCOMPARE(times->maximumDateTime().toString(Qt::ISODate), QString("2300-12-31T23:59:59Z"));
    }
}

void TestConsole::generatesASerialNumber()
{
    QCOMPARE(QDate(2026, 1, 2).toString("yy"), QString("۲۶")); // the locale is in effect
    const DialogRig rig(makeDialog<setSysInfoDlg>);
    const auto month = [] { return QLocale::c().toString(QDate::currentDate(), "yyMM"); };
    const QString before = month();
    const auto generate = [&rig] {
        rig.click("randomSerialBtnClickAct");
        return rig.value("serialEdit").toString();
    };
    const QString serial = generate();
    const QRegularExpression form("^KV(" + before + '|' + month() + ")[0-9A-Za-z]{9}$");
    QVERIFY2(form.match(serial).hasMatch(), qPrintable(serial));
    QTRY_VERIFY(generate() != serial); // the random part is seeded with the time of day
}

QTEST_MAIN(TestConsole)
#include "tst_console.moc"
