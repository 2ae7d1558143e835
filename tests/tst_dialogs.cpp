#include "app/appearance.h"
#include "app/language.h"
#include "dialogs/adduserdlg.h"
#include "dialogs/remoteenrolldlg.h"
#include "dialogs/setsysinfodlg.h"
#include "testkit/dialogrig.h"
#include "testkit/modaldriver.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

class TestDialogs : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("LC_ALL", "fa_IR.UTF-8"); } // a locale with other digits

private slots:
    void initTestCase();
    void cleanup() { remote().removeRecursively(); }
    void addsAUser_data();
    void addsAUser();
    void getsAnEmptyId_data();
    void getsAnEmptyId();
    void limitsTypedText();
    void loadsARemoteEnrollment_data();
    void loadsARemoteEnrollment();
    void setsTheSerialNumber_data();
    void setsTheSerialNumber();
    void keepsATypedSerialNumber();
    void generatesASerialNumber();
    void doesNotUpgradeYet();

private:
    static QDir remote() { return QCoreApplication::applicationDirPath() + "/remote"; }
};

namespace {

const QByteArray Ok = hex("EAC5 000001 00");

/// Returns one of a pair's two frames; all frames and all rows differ.
QByteArray frame(int index, int camera)
{
    QByteArray bytes;
    for (int row = 0; row < 720; ++row)
        bytes += QByteArray(536, static_cast<char>(row)) + QByteArray(1, static_cast<char>(index)) +
                 QByteArray(2, static_cast<char>(camera)) +
                 QByteArray(1, static_cast<char>(row / 256));
    return bytes;
}

} // namespace

void TestDialogs::initTestCase()
{
    prepareAppearance();
    useLanguage();
    QCOMPARE(QDate(2026, 1, 2).toString("yy"), QString("۲۶")); // the locale is in effect
}

void TestDialogs::addsAUser_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("card");
    QTest::addColumn<QString>("department");
    QTest::addColumn<QByteArray>("record"); ///< empty: no request is sent
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("lines");

    const QString thirty(10, QChar(0x5F20)); // UTF-8 bytes
    const QString thirtyTwo(16, QChar(0xE9));
    const QString thirtyThree(11, QChar(0x5F20));
    const QChar half(0xD83D); // first half of a surrogate pair that the length limit has cut
    const auto field = [half](QString text) {
        return text.remove(half).toUtf8().leftJustified(32, '\0');
    };
    const auto row = [&](const char *tag, const QString &name, const QString &card,
                         const char *cardBytes, const QString &department, const QByteArray &answer,
                         const QStringList &lines) {
        QByteArray record = hex("00010000") + hex(cardBytes) + field(name) + field(department);
        QTest::newRow(tag) << name << card << department
                           << (answer.isEmpty() ? QByteArray() : record) << answer << lines;
    };
    const QStringList created{"User created."};
    row("all", "Ann Lee", "168496141", "0A0B0C0D", "Lab", Ok, created);
    row("name-only", "a", "", "00000000", "", Ok, created);
    row("greatest-card", "a", "4294967295", "FFFFFFFF", "", Ok, created);
    row("card-out-of-range", "a", "4294967296", "00000000", "", Ok, created);
    row("30-bytes", thirty, "", "00000000", thirty, Ok, created);
    row("32-bytes", thirtyTwo, "", "00000000", thirtyTwo, Ok, created);
    row("half-a-character", "a" + QString(half), "", "00000000", "b" + QString(half), Ok, created);
    row("name-of-33-bytes", thirtyThree, "", "", "", {}, {"The username is too long."});
    row("department-of-33-bytes", "a", "", "", thirtyThree, {},
        {"The department name is too long."});
    row("both-of-33-bytes", thirtyThree, "", "", thirtyThree, {}, {"The username is too long."});
    row("no-name", "", "1", "", thirtyThree, {}, {"Username can't be empty."});
    row("refused", "a", "7", "00000007", "b", hex("EAC5 000001 14"),
        {"User ID exists.", "User creating failed."});
}

void TestDialogs::addsAUser()
{
    QFETCH(QString, name);
    QFETCH(QString, card);
    QFETCH(QString, department);
    QFETCH(QByteArray, record);
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, lines);

    DialogRig rig(makeDialog<AddUserDlg>);
    rig.find<QSpinBox>("userIdSpinBox")->setValue(65536);
    rig.find<QLineEdit>("userNameEdit")->setText(name);
    rig.find<QLineEdit>("cardEdit")->setText(card);
    rig.find<QLineEdit>("departmentEdit")->setText(department);
    if (!record.isEmpty())
        rig.peer.expect({hex("EAC5 000049 30") + record, {answer}});
    rig.click("createBtnClickAct");
    QCOMPARE(rig.lines(), lines);
    QCOMPARE(rig.dialog->isVisible(), lines != QStringList("User created."));
    QCOMPARE(rig.find<QLineEdit>("userNameEdit")->text(), name);

    rig.dialog->show();
    rig.click("cancelBtnClickAct");
    QVERIFY(!rig.dialog->isVisible());
}

void TestDialogs::getsAnEmptyId_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("lines");
    const QStringList got{"Empty user ID getting succeeded."};
    QTest::newRow("free") << hex("EAC5 000005 00 00000102") << 258 << got;
    QTest::newRow("last") << hex("EAC5 000005 00 00010000") << 65536 << got;
    QTest::newRow("beyond-the-last") << hex("EAC5 000005 00 00010001") << 65536 << got;
    QTest::newRow("greatest") << hex("EAC5 000005 00 FFFFFFFF") << 65536 << got;
    QTest::newRow("zero") << hex("EAC5 000005 00 00000000") << 1 << got;
    QTest::newRow("full") << hex("EAC5 000001 16") << 9
                          << QStringList{"The user database is full."};
}

void TestDialogs::getsAnEmptyId()
{
    QFETCH(QByteArray, answer);
    DialogRig rig(makeDialog<AddUserDlg>);
    QCOMPARE(rig.find<QSpinBox>("userIdSpinBox")->value(), 1);
    rig.find<QSpinBox>("userIdSpinBox")->setValue(9);
    rig.peer.expect({hex("EAC5 000001 33"), {answer}});
    rig.click("getEmptyUIDBtnClickAct");
    QTEST(rig.lines(), "lines");
    QTEST(rig.find<QSpinBox>("userIdSpinBox")->value(), "value");
}

void TestDialogs::limitsTypedText()
{
    const DialogRig user(makeDialog<AddUserDlg>);
    const DialogRig settings(makeDialog<setSysInfoDlg>);
    const auto typed = [](QLineEdit *edit, const QString &text) {
        QTest::keyClicks(edit, text);
        return edit->text();
    };
    QCOMPARE(user.find<QSpinBox>("userIdSpinBox")->minimum(), 1);
    QCOMPARE(user.find<QSpinBox>("userIdSpinBox")->maximum(), 65536);
    QCOMPARE(typed(user.find<QLineEdit>("cardEdit"), "1a-2 345678901"), QString("1234567890"));
    QCOMPARE(typed(user.find<QLineEdit>("userNameEdit"), QString(40, 'n')), QString(31, 'n'));
    QCOMPARE(typed(user.find<QLineEdit>("departmentEdit"), QString(40, 'd')), QString(31, 'd'));
    QCOMPARE(typed(settings.find<QLineEdit>("serialEdit"), "KV-24_03 abcDEF789xyz"),
             QString("KV2403abcDEF789"));
}

void TestDialogs::loadsARemoteEnrollment_data()
{
    QTest::addColumn<int>("refused");      ///< request: index of an image, 5: features, -1: none
    QTest::addColumn<int>("silent");       ///< request without an answer, likewise
    QTest::addColumn<QString>("obstacle"); ///< a folder made in remote/; ".": no remote/
    QTest::addColumn<int>("requests");
    QTest::addColumn<QStringList>("lines");

    const QString folder = remote().path();
    QStringList whole;
    for (const char number : {'1', '2', '3', '4', '5'})
        whole << QString("read the %1th image").arg(number)
              << QString("Firmware saved：%1/remote_img%2.raw").arg(folder).arg(number);
    whole << "Features loaded."
          << "Features saved：" + folder + "/remote_feat.bin";
    QTest::newRow("all") << -1 << -1 << "" << 6 << whole;
    QTest::newRow("image-silent") << -1 << 0 << "" << 6
                                  << QStringList("Fail to accept ACK.") + whole.mid(2);
    QTest::newRow("image-refused")
        << 1 << -1 << "" << 6 << whole.mid(0, 2) + QStringList("Wrong parameter.") + whole.mid(4);
    QTest::newRow("features-refused")
        << 5 << -1 << "" << 6 << whole.mid(0, 10) + QStringList("Wrong parameter.");
    QTest::newRow("no-folder") << -1 << -1 << "." << 1
                               << QStringList{"read the 1th image", "Fail to save the image."};
    QTest::newRow("image-not-writable") << -1 << -1 << "remote_img2.raw" << 2
                                        << whole.mid(0, 3) + QStringList("Fail to save the image.");
    QTest::newRow("features-not-writable")
        << -1 << -1 << "remote_feat.bin" << 6
        << whole.mid(0, 11) + QStringList("Fail to save the features.");
}

void TestDialogs::loadsARemoteEnrollment()
{
    QFETCH(int, refused);
    QFETCH(int, silent);
    QFETCH(QString, obstacle);
    QFETCH(int, requests);
    QFETCH(QStringList, lines);

    if (obstacle != ".")
        QVERIFY(QDir().mkpath(remote().filePath(obstacle)));
    const QByteArray features(10240, 'f');
    DialogRig rig(makeDialog<RemoteEnrollDlg>);
    for (int i = 0; i < requests; ++i) {
        const QByteArray request =
            i < 5 ? hex("EAC5 000006 27 000000FF") + char(i) : hex("EAC5 000005 28 000000FF");
        const QByteArray data = i < 5 ? frame(i, 1) + frame(i, 2) : features;
        const QByteArray answer = head(data.size() + 1) + '\0' + data;
        if (i == silent)
            rig.peer.expect({request, {}});
        else
            rig.peer.expect({request, {i == refused ? hex("EAC5 000001 02") : answer}});
    }
    rig.click("readBtnClickAct");
    // The dialog connects again, since a late picture could arrive on the old connection.
    QCOMPARE(rig.peer.connectionCount(), silent < 0 ? 1 : 2);
    QCOMPARE(rig.lines(), lines);

    int files = 0;
    for (int i = 0; i < 5; ++i) {
        const QString path = remote().filePath(QString("remote_img%1.raw").arg(i + 1));
        if (!lines.contains("Firmware saved：" + path))
            continue;
        ++files;
        const QByteArray content = contentOf(path);
        QCOMPARE(content.size(), 777600);
        const QByteArray left = frame(i, 1);
        const QByteArray right = frame(i, 2);
        for (int row = 0; row < 720; ++row) {
            QVERIFY(content.mid(1080 * row, 540) == left.mid(540 * row, 540));
            QVERIFY(content.mid(1080 * row + 540, 540) == right.mid(540 * row, 540));
        }
    }
    if (lines.last().startsWith("Features saved")) {
        ++files;
        QVERIFY(contentOf(remote().filePath("remote_feat.bin")) == features);
    }
    QCOMPARE(remote().entryList(QDir::Files).size(), files);
}

void TestDialogs::setsTheSerialNumber_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("15-characters")
        << "KV2403abcDEF789" << Ok << QStringList{"Serial number set succeded."};
    QTest::newRow("refused") << "KV2403abcDEF789" << hex("EAC5 000001 09")
                             << QStringList{"Unknown error:9"};
    QTest::newRow("14-characters")
        << "KV2403abcDEF78" << QByteArray() << QStringList{"Wrong format of serial number."};
    QTest::newRow("other-digits") << "KV۲۶۱۱abcDEF789" << QByteArray()
                                  << QStringList{"Wrong format of serial number."};
    QTest::newRow("empty") << "" << QByteArray() << QStringList{"Wrong format of serial number."};
}

void TestDialogs::setsTheSerialNumber()
{
    QFETCH(QString, serial);
    QFETCH(QByteArray, answer);
    DialogRig rig(makeDialog<setSysInfoDlg>);
    if (!answer.isEmpty())
        rig.peer.expect({hex("EAC5 000011 50 4B563234303361626344454637383900"), {answer}});
    rig.find<QLineEdit>("serialEdit")->setText(serial);
    rig.click("setSerialBtnClickAct");
    QTEST(rig.lines(), "lines");
}

// The peer would report a request.
void TestDialogs::keepsATypedSerialNumber()
{
    const DialogRig rig(makeDialog<setSysInfoDlg>);
    auto *edit = rig.find<QLineEdit>("serialEdit");
    QTest::keyClicks(edit, "KV2601SIM000001");
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(edit->text(), QString("KV2601SIM000001"));
}

void TestDialogs::generatesASerialNumber()
{
    const DialogRig rig(makeDialog<setSysInfoDlg>);
    const auto *edit = rig.find<QLineEdit>("serialEdit");
    QSet<QString> made;
    const auto another = [&] {
        const QString before = QLocale::c().toString(QDate::currentDate(), "yyMM");
        rig.click("randomSerialBtnClickAct");
        const QString after = QLocale::c().toString(QDate::currentDate(), "yyMM");
        const QRegularExpression form("^KV(" + before + '|' + after + ")[0-9A-Za-z]{9}$");
        if (!form.match(edit->text()).hasMatch())
            qFatal("made %s", qPrintable(edit->text()));
        made.insert(edit->text());
        return made.size() > 5;
    };
    QTRY_VERIFY(another()); // the random part is seeded with the time of day
    QCOMPARE(rig.lines(), QStringList());
}

void TestDialogs::doesNotUpgradeYet()
{
    const DialogRig rig(makeDialog<setSysInfoDlg>);
    const auto *path = rig.find<QLineEdit>("firmwareEdit");
    QVERIFY(path->isReadOnly());
    const QString file = QCoreApplication::applicationFilePath();
    ModalDriver driver([&](QWidget *box) {
        const auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), QString("select fw"));
        QCOMPARE(files->directory().path(), QCoreApplication::applicationDirPath());
        answer::file(file)(box);
    });
    rig.click("selectOtaFileBtnClickAct");
    QCOMPARE(path->text(), file);
    driver.then(answer::close());
    rig.click("selectOtaFileBtnClickAct");
    QCOMPARE(path->text(), file);
    rig.click("otaBtnClickAct");
    QCOMPARE(rig.lines(), QStringList("Not supported for now."));
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
