#include "data/wholefile.h"
#include "testkit/modaldriver.h"
#include "testkit/windowrig.h"

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
    void sendsWithoutADialog_data();
    void sendsWithoutADialog();
    void asksForTheUser_data();
    void asksForTheUser();
    void enrolls();
    void importsFeatures_data();
    void importsFeatures();
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

void TestUserOperations::sendsWithoutADialog_data()
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
    const char empty[] = "idealBtnClickAct";
    const char verify[] = "recgBtnClickAct";
    const char refused[] = "EAC5 000001 41";
    row("clear", "clearUserBtnClickAct", "EAC5 000001 0E", Ok, "Remote Recognition",
        {"User cleared."});
    row("empty", empty, "EAC5 000002 0400", Ok, "Empty", {"Instruction sending succeeded."});
    row("empty-refused", empty, "EAC5 000002 0400", refused, "Empty",
        {"Mode set failed: A", "Instruction sending failed."});
    row("verify", verify, "EAC5 000002 0403", Ok, "Local Recognition",
        {"The device has entered recognition mode."});
    row("verify-refused", verify, "EAC5 000002 0403", refused, "Local Recognition",
        {"Mode set failed: A", "Fail to set mode."});

    const auto mode = [&](const char *answer, const char *line) {
        row(line, "getModeBtnClickAct", "EAC5 000001 05", answer, "Remote Recognition", {line});
    };
    mode("EAC5 000001 00", "Current mode：Empty");
    mode("EAC5 000001 01", "Current mode：Enroll");
    mode("EAC5 000001 02", "Current mode：other mode");
    mode("EAC5 000001 03", "Current mode：Local Recognition");
    mode("EAC5 000001 04", "Current mode：Remote Recognition");
    mode(Silence, "Fail to get mode.");
}

// The mode box shows the last command, even if it failed.
void TestUserOperations::sendsWithoutADialog()
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
    QTest::addColumn<QString>("typed"); // null: cancelled
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QStringList>("lines");

    const QByteArray user("delUserBtnClickAct");
    const QByteArray features("clearUserFeatBtnClickAct");
    QTest::newRow("first") << user << "" << hex("EAC5 000005 31 00000001")
                           << QStringList("User deleted successfully:1");
    QTest::newRow("last") << user << "65536" << hex("EAC5 000005 31 00010000")
                          << QStringList("User deleted successfully:65536");
    QTest::newRow("beyond-the-last") << user << "65537" << hex("EAC5 000005 31 00001999")
                                     << QStringList("User deleted successfully:6553");
    QTest::newRow("cancelled") << user << QString() << QByteArray() << QStringList();
    QTest::newRow("features") << features << "258" << hex("EAC5 000005 34 00000102")
                              << QStringList("User features deleted successfully:258");
    QTest::newRow("features-cancelled") << features << QString() << QByteArray() << QStringList();
}

void TestUserOperations::asksForTheUser()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, typed);
    QFETCH(QByteArray, request);

    WindowRig rig;
    rig.connectToPeer();
    rig.find<QSpinBox>("idSpinBox")->setValue(99); // must have no effect
    if (!request.isEmpty())
        rig.peer.expect({request, {hex(Ok)}});
    const ModalDriver driver([&](QWidget *widget) {
        auto *box = qobject_cast<QInputDialog *>(widget);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("User ID"));
        QCOMPARE(box->labelText(), QString("User ID："));
        QCOMPARE(box->intValue(), 1);
        QCOMPARE(box->intMinimum(), 1);
        QCOMPARE(box->intMaximum(), 65536);
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
    const auto press = [&](const char *answer, const QStringList &lines, bool previews) {
        rig.click("clearInfoTextBtnClickAct");
        rig.peer.expect({request, pieces(answer)});
        rig.click("enrollBtnClickAct");
        QCOMPARE(rig.lines("infoText"), lines);
        QCOMPARE(rig.caption("showIrBtnClickAct"),
                 QString(previews ? "stop collecting" : "palm vein preview"));
        QCOMPARE(timer->isActive(), previews);
        QCOMPARE(joint->isEnabled(), !previews);
        QCOMPARE(rig.find<QComboBox>("modeCombo")->currentText(), QString("Enroll"));
    };
    press("EAC5 000001 02", {"Wrong parameter.", "Enrollment failed."}, false);
    press("EAC5 000001 15", {"User ID doesn't exist.", "Enrollment failed."}, true);
    QTRY_VERIFY(rig.peer.servedCount() >= 1);
    press("EAC5 000001 02", {"Wrong parameter.", "Enrollment failed."}, false);
    press(Ok, {started}, true);
    press(Ok, {started}, true);
    const int before = rig.peer.servedCount();
    QTRY_VERIFY(rig.peer.servedCount() > before);

    rig.click("showIrBtnClickAct");
    QCOMPARE(rig.caption("showIrBtnClickAct"), QString("Palm Vein Preview"));
    QVERIFY(!timer->isActive());
    QVERIFY(joint->isEnabled());
}

void TestUserOperations::importsFeatures_data()
{
    QTest::addColumn<int>("size"); // -1: cancelled
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("whole") << 10240 << QStringList("Feature file importing succeeded.");
    QTest::newRow("too-short") << 10239 << QStringList("Wrong format of feature file.");
    QTest::newRow("too-long") << 10241 << QStringList("Wrong format of feature file.");
    QTest::newRow("cancelled") << -1 << QStringList();
}

void TestUserOperations::importsFeatures()
{
    QFETCH(int, size);
    const QTemporaryDir folder;
    const QString path = folder.filePath("palm.bin");
    const QByteArray features = frame(1).left(size);
    QVERIFY(writeWholeFile(path, features));
    const QString remote = QCoreApplication::applicationDirPath() + "/remote";
    QVERIFY(QDir().mkpath(remote)); // as the build does

    WindowRig rig;
    rig.connectToPeer();
    rig.find<QSpinBox>("idSpinBox")->setValue(258);
    if (size == 10240)
        rig.peer.expect({hex("EAC5 002806 2A 00 00000102") + features, {hex(Ok)}});
    const ModalDriver driver([&](QWidget *box) {
        const auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), QString("Select feature file"));
        QCOMPARE(files->directory().path(), remote);
        QCOMPARE(files->nameFilters(), QStringList("*.bin"));
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptOpen);
        (size >= 0 ? answer::file(path) : answer::close())(box);
    });
    rig.click("importFeatureBtnClickAct");
    QTEST(rig.lines("infoText"), "lines");
}

void TestUserOperations::reboots_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("Yes") << QStringList("The system will restart after 10 seconds.");
    QTest::newRow("No") << QStringList();
}

void TestUserOperations::reboots()
{
    QFETCH(QStringList, lines);
    WindowRig rig;
    rig.connectToPeer();
    if (!lines.isEmpty())
        rig.peer.expect({hex("EAC5 000001 EF"), {hex(Ok)}});
    const ModalDriver driver([&](QWidget *widget) {
        const auto *box = qobject_cast<QMessageBox *>(widget);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("warning"));
        QCOMPARE(box->text(), QString("Sure to reboot the system?"));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        answer::click(QTest::currentDataTag())(widget);
    });
    rig.click("rebootBtnClickAct");
    QCOMPARE(rig.lines("infoText"), lines);
}

void TestUserOperations::asksForTheKey_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("right: OK") << "qrabel274" << QStringList();
    QTest::newRow("right: Cancel") << "qrabel274" << QStringList("Wrong secret key.");
    QTest::newRow("other case: OK") << "Qrabel274" << QStringList("Wrong secret key.");
    QTest::newRow("blank behind: OK") << "qrabel274 " << QStringList("Wrong secret key.");
}

void TestUserOperations::asksForTheKey()
{
    QFETCH(QString, typed);
    QFETCH(QStringList, lines);
    const QString button = QString(QTest::currentDataTag()).section(": ", 1);

    WindowRig rig;
    rig.connectToPeer();
    ModalDriver driver([&](QWidget *widget) {
        const auto *box = qobject_cast<QInputDialog *>(widget);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("Vendor secret key"));
        QCOMPARE(box->labelText(), QString("secret key"));
        QTest::keyClicks(widget->findChild<QLineEdit *>(), typed);
        answer::click(button)(widget);
    });
    if (lines.isEmpty()) {
        driver.then([](QWidget *box) {
            QCOMPARE(box->metaObject()->className(), "setSysInfoDlg");
            QVERIFY(!box->parentWidget());
            box->close();
        });
    }
    rig.click("manuCfgBtnClickAct");
    QCOMPARE(rig.lines("infoText"), lines);
}

QTEST_MAIN(TestUserOperations)
#include "tst_useroperations.moc"
