#include "boxuser.h"
#include "windowrig.h"

#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

class TestUserOperations : public QObject
{
    Q_OBJECT

private slots:
    void sendsAtOnce_data();
    void sendsAtOnce();
    void asksForTheUser_data();
    void asksForTheUser();
    void enrolls();
    void importsFeatures_data();
    void importsFeatures();
    void listsTheSystemInformation_data();
    void listsTheSystemInformation();
    void reboots_data();
    void reboots();
    void asksForTheKey_data();
    void asksForTheKey();
};

namespace {

const char Ok[] = "EAC5 000001 00";
const char Silence[] = "";

QList<QByteArray> pieces(const char *answer)
{
    return *answer ? QList<QByteArray>{hex(answer)} : QList<QByteArray>{};
}

} // namespace

void TestUserOperations::sendsAtOnce_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QList<QByteArray>>("answer");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("lines");

    const auto row = [](const char *name, const char *button, const char *request,
                        const char *answer, const char *mode, const QStringList &lines) {
        QTest::newRow(name) << QByteArray(button) << hex(request) << pieces(answer) << QString(mode)
                            << lines;
    };
    const char clear[] = "clearUserBtnClickAct";
    row("clear", clear, "EAC5 000001 0E", Ok, "Remote Recognition", {"User cleared."});
    row("clear-refused", clear, "EAC5 000001 0E", "EAC5 000001 35", "Remote Recognition",
        {"Fail to clear users：5"});
    const char empty[] = "idealBtnClickAct";
    row("empty", empty, "EAC5 000002 0400", Ok, "Empty", {"Instruction sending succeeded."});
    row("empty-refused", empty, "EAC5 000002 0400", "EAC5 000001 41", "Empty",
        {"Mode set failed: A", "Instruction sending failed."});
    const char verify[] = "recgBtnClickAct";
    row("verify", verify, "EAC5 000002 0403", Ok, "Local Recognition",
        {"The device has entered recognition mode."});
    row("verify-refused", verify, "EAC5 000002 0403", "EAC5 000001 41", "Local Recognition",
        {"Mode set failed: A", "Fail to set mode."});
    row("verify-unanswered", verify, "EAC5 000002 0403", Silence, "Local Recognition",
        {"Fail to set mode."});

    const char mode[] = "getModeBtnClickAct";
    const auto modeRow = [&](const char *name, const char *answer, const char *shown) {
        row(name, mode, "EAC5 000001 05", answer, "Remote Recognition",
            {QString("Current mode：") + shown});
    };
    modeRow("mode-0", "EAC5 000001 00", "Empty");
    modeRow("mode-1", "EAC5 000001 01", "Enroll");
    modeRow("mode-2", "EAC5 000001 02", "other mode");
    modeRow("mode-3", "EAC5 000001 03", "Local Recognition");
    modeRow("mode-4", "EAC5 000001 04", "Remote Recognition");
    modeRow("mode-255", "EAC5 000001 FF", "other mode");
    row("mode-unanswered", mode, "EAC5 000001 05", Silence, "Remote Recognition",
        {"Fail to get mode."});
}

// The mode box shows what was commanded last, also when it failed.
void TestUserOperations::sendsAtOnce()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, request);
    QFETCH(QList<QByteArray>, answer);

    WindowRig rig;
    rig.connectToPeer();
    auto *modeCombo = rig.find<QComboBox>("modeCombo");
    modeCombo->setCurrentIndex(3);
    rig.peer.expect({request, answer});
    rig.click(button);
    QTEST(rig.lines("infoText"), "lines");
    QTEST(modeCombo->currentText(), "mode");
}

void TestUserOperations::asksForTheUser_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("lines");

    const QByteArray user("delUserBtnClickAct");
    const QByteArray features("clearUserFeatBtnClickAct");
    const QByteArray ok = hex(Ok);
    QTest::newRow("user-first") << user << "" << hex("EAC5 000005 31 00000001") << ok
                                << QStringList{"User deleted successfully:1"};
    QTest::newRow("user-last") << user << "65536" << hex("EAC5 000005 31 00010000") << ok
                               << QStringList{"User deleted successfully:65536"};
    QTest::newRow("user-beyond-the-last") << user << "65537" << hex("EAC5 000005 31 00001999") << ok
                                          << QStringList{"User deleted successfully:6553"};
    QTest::newRow("user-unknown") << user << "258" << hex("EAC5 000005 31 00000102")
                                  << hex("EAC5 000001 15") << QStringList{"User doesn't exist."};
    QTest::newRow("user-cancelled")
        << user << QString() << QByteArray() << QByteArray() << QStringList();
    QTest::newRow("features") << features << "258" << hex("EAC5 000005 34 00000102") << ok
                              << QStringList{"User features deleted successfully:258"};
    QTest::newRow("features-busy")
        << features << "2" << hex("EAC5 000005 34 00000002") << hex("EAC5 000001 01")
        << QStringList{"The device is processing tasks, the deletion is failed."};
    QTest::newRow("features-cancelled")
        << features << QString() << QByteArray() << QByteArray() << QStringList();
}

void TestUserOperations::asksForTheUser()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, typed);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);

    WindowRig rig;
    rig.connectToPeer();
    rig.find<QSpinBox>("idSpinBox")->setValue(99); // of no effect here
    if (!request.isEmpty())
        rig.peer.expect({request, {answer}});
    const BoxUser user([&](QWidget *widget) {
        auto *box = qobject_cast<QInputDialog *>(widget);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("User ID"));
        QCOMPARE(box->labelText(), QString("User ID："));
        QCOMPARE(box->parentWidget(), &rig.window);
        QCOMPARE(box->intValue(), 1);
        QCOMPARE(box->intMinimum(), 1);
        QCOMPARE(box->intMaximum(), 65536);
        QCOMPARE(box->intStep(), 1);
        auto *number = box->findChild<QSpinBox *>();
        if (!typed.isEmpty()) {
            number->selectAll();
            QTest::keyClicks(number, typed);
        }
        QTest::keyClick(box, typed.isNull() ? Qt::Key_Escape : Qt::Key_Return);
    });
    rig.click(button);
    QTEST(rig.lines("infoText"), "lines");
}

void TestUserOperations::enrolls()
{
    WindowRig rig;
    rig.connectToPeer();
    rig.peer.serve(hex("EAC5 000001 02"), head(388800) + QByteArray(388800, 'v'));
    rig.find<QSpinBox>("idSpinBox")->setValue(65536);
    const QByteArray request = hex("EAC5 000006 04 01 00010000");
    const QString started =
        "The input instruction has been sent successfully. Please complete the input process "
        "according to the prompts.";
    const auto *timer = rig.window.findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    const auto *joint = rig.find<QPushButton>("showMixBtnClickAct");
    const auto press = [&](const char *answer, const QStringList &lines, const char *caption) {
        rig.click("clearInfoTextBtnClickAct");
        rig.peer.expect({request, pieces(answer)});
        rig.click("enrollBtnClickAct");
        QCOMPARE(rig.lines("infoText"), lines);
        QCOMPARE(rig.caption("showIrBtnClickAct"), QString(caption));
        QCOMPARE(rig.find<QComboBox>("modeCombo")->currentText(), QString("Enroll"));
    };

    press("EAC5 000001 02", {"Wrong parameter.", "Enrollment failed."}, "palm vein preview");
    QVERIFY(!timer->isActive());
    QVERIFY(joint->isEnabled());
    press("EAC5 000001 15", {"User ID doesn't exist.", "Enrollment failed."}, "stop collecting");
    QVERIFY(timer->isActive());
    QVERIFY(!joint->isEnabled());
    QTRY_VERIFY(rig.peer.servedCount() >= 1);
    press(Silence, {"Enrollment failed."}, "palm vein preview");
    QVERIFY(!timer->isActive());
    press(Ok, {started}, "stop collecting");
    press(Ok, {started}, "stop collecting");
    QVERIFY(timer->isActive());
    QVERIFY(!joint->isEnabled());
    const int before = rig.peer.servedCount();
    QTRY_VERIFY(rig.peer.servedCount() > before);

    rig.click("showIrBtnClickAct");
    QCOMPARE(rig.caption("showIrBtnClickAct"), QString("Palm Vein Preview"));
    QVERIFY(!timer->isActive());
    QVERIFY(joint->isEnabled());
}

void TestUserOperations::importsFeatures_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("lines");

    const QStringList wrong{"Wrong format of feature file."};
    QTest::newRow("whole") << 10240 << hex(Ok) << QStringList{"Feature file importing succeeded."};
    QTest::newRow("refused") << 10240 << hex("EAC5 000001 16")
                             << QStringList{"The user feature buffer is full."};
    QTest::newRow("too-short") << 10239 << QByteArray() << wrong;
    QTest::newRow("too-long") << 10241 << QByteArray() << wrong;
    QTest::newRow("empty") << 0 << QByteArray() << wrong;
    QTest::newRow("cancelled") << -1 << QByteArray() << QStringList();
}

void TestUserOperations::importsFeatures()
{
    QFETCH(int, size);
    QFETCH(QByteArray, answer);

    const QTemporaryDir folder;
    QFile file(folder.filePath("palm.bin"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QByteArray features;
    for (int i = 0; i < size; ++i)
        features.append(char(i % 251));
    file.write(features);
    file.close();

    WindowRig rig;
    rig.connectToPeer();
    rig.find<QSpinBox>("idSpinBox")->setValue(258);
    if (!answer.isEmpty())
        rig.peer.expect({hex("EAC5 002806 2A 00 00000102") + features, {answer}});
    const BoxUser user([&](QWidget *box) {
        const auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), QString("Select feature file"));
        QCOMPARE(files->directory().path(), QCoreApplication::applicationDirPath());
        QCOMPARE(files->nameFilters(), QStringList("*.bin"));
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptOpen);
        if (size >= 0)
            BoxUser::choose(file.fileName())(box);
    });
    rig.click("importFeatureBtnClickAct");
    QTEST(rig.lines("infoText"), "lines");
}

void TestUserOperations::listsTheSystemInformation_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("lines");

    const auto row = [](const char *name, const QByteArray &document, const QStringList &lines) {
        QTest::newRow(name) << document << lines;
    };
    const QStringList unreadable{"JSON parsing failed."};
    row("whole", R"({"mac_address": "02:00:5E:00:53:01", "max_record_num": 100000,
        "max_user_num": 3000, "qrcode_alg_version": "q3", "print_alg_version": "p2",
        "vein_alg_version": "v1", "fw_version": "1.0", "dev_serial": "KV2403abcdefghi",
        "dev_name": "ZT415", "other": 1})",
        {"Device Name：ZT415", "Device Serial Number：KV2403abcdefghi", "Firmware Version：1.0",
         "Vein Algorithm Version：v1", "Print Algorithm Version：p2",
         "QrCode Algorithm Version：q3", "System User Volume：3000", "System Record Volume：100000",
         "MAC Address：02:00:5E:00:53:01"});
    row("nothing-known", R"({"name": "x"})", {});
    row("all-null", R"({"dev_name": null, "fw_version": null, "max_user_num": null,
        "max_record_num": null, "mac_address": null})",
        {});
    row("wrong-kinds", R"({"dev_name": {}, "dev_serial": ["x"], "max_user_num": "3000",
        "max_record_num": [], "mac_address": 5})",
        {});
    row("number-as-text", R"({"dev_name": 5})", {"Device Name：5"});
    row("Latin-1", "{\"dev_name\": \"caf\xE9\", \"mac_address\": \"\xB5\"}",
        {"Device Name：café", "MAC Address：µ"});
    row("UTF-8-byte-for-byte", "{\"dev_name\": \"\xC3\xA9\"}", {"Device Name：Ã©"});
    row("address-with-zero", R"({"mac_address": "02\u000003"})", {"MAC Address：02"});
    row("markup", R"({"dev_name": "<b>%1</b>"})", {"Device Name：<b>%1</b>"});
    row("greatest-number", R"({"max_user_num": 4294967295, "max_record_num": 0})",
        {"System User Volume：4294967295", "System Record Volume：0"});
    row("numbers-out-of-range", R"({"max_user_num": 4294967296, "max_record_num": -1})", {});
    row("no-JSON", "dev_name", unreadable);
    row("array", R"([{"dev_name": "x"}])", unreadable);
    row("no-text", "", unreadable);
}

void TestUserOperations::listsTheSystemInformation()
{
    QFETCH(QByteArray, document);
    QFETCH(QStringList, lines);

    WindowRig rig;
    rig.connectToPeer();
    rig.peer.expect({hex("EAC5 000001 17"), {head(document.size() + 1) + '\0' + document}});
    rig.click("getSysInfoBtnClickAct");
    lines.prepend("System info acquiring succeeded.");
    QCOMPARE(rig.lines("infoText"), lines);
}

void TestUserOperations::reboots_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("yes") << "Yes" << hex(Ok)
                         << QStringList{"The system will restart after 10 seconds."};
    QTest::newRow("yes-refused") << "Yes" << hex("EAC5 000001 37")
                                 << QStringList{"Fail to reboot the system：7"};
    QTest::newRow("no") << "No" << QByteArray() << QStringList();
    QTest::newRow("closed") << "" << QByteArray() << QStringList();
}

void TestUserOperations::reboots()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, answer);

    WindowRig rig;
    rig.connectToPeer();
    if (!answer.isEmpty())
        rig.peer.expect({hex("EAC5 000001 EF"), {answer}});
    const BoxUser user([&](QWidget *widget) {
        const auto *box = qobject_cast<QMessageBox *>(widget);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("warning"));
        QCOMPARE(box->text(), QString("Sure to reboot the system?"));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QVERIFY(!box->defaultButton());
        if (!button.isEmpty())
            BoxUser::press(button)(widget);
    });
    rig.click("rebootBtnClickAct");
    QTEST(rig.lines("infoText"), "lines");
}

void TestUserOperations::asksForTheKey_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("lines");
    const QStringList wrong{"Wrong secret key."};
    QTest::newRow("right") << "qrabel274"
                           << "OK" << QStringList();
    QTest::newRow("right-cancelled") << "qrabel274"
                                     << "Cancel" << wrong;
    QTest::newRow("other-case") << "Qrabel274"
                                << "OK" << wrong;
    QTest::newRow("longer") << "qrabel2740"
                            << "OK" << wrong;
    QTest::newRow("blank-behind") << "qrabel274 "
                                  << "OK" << wrong;
    QTest::newRow("empty") << ""
                           << "OK" << wrong;
}

void TestUserOperations::asksForTheKey()
{
    QFETCH(QString, typed);
    QFETCH(QString, button);
    QFETCH(QStringList, lines);

    WindowRig rig;
    rig.connectToPeer();
    BoxUser user([&](QWidget *widget) {
        const auto *box = qobject_cast<QInputDialog *>(widget);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("Vendor secret key"));
        QCOMPARE(box->labelText(), QString("secret key"));
        QCOMPARE(box->textEchoMode(), QLineEdit::Normal);
        QCOMPARE(box->textValue(), QString());
        QTest::keyClicks(widget->findChild<QLineEdit *>(), typed);
        BoxUser::press(button)(widget);
    });
    if (lines.isEmpty()) {
        user.then([](QWidget *box) {
            QCOMPARE(box->metaObject()->className(), "setSysInfoDlg");
            QVERIFY(!box->parentWidget());
        });
    }
    rig.click("manuCfgBtnClickAct");
    QCOMPARE(rig.lines("infoText"), lines);
}

QTEST_MAIN(TestUserOperations)
#include "tst_useroperations.moc"
