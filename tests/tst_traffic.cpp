#include "boxuser.h"
#include "dialogs/adduserdlg.h"
#include "linkrig.h"
#include "simulator/stamp.h"
#include "simulator/terminal.h"
#include "windowrig.h"

#include <QCloseEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

class TestTraffic : public QObject
{
    Q_OBJECT

private slots:
    void keepsCommandsAndPreviewApart();
    void showsTheBusyCursor_data();
    void showsTheBusyCursor();
    void nestsTheBusyCursor();
};

namespace {

/// The corner of a picture label that shows a frame's stamp.
QImage stampOf(const QImage &picture)
{
    return picture.copy(0, 468, 130, 12).convertToFormat(QImage::Format_Grayscale8);
}

QImage stampOf(int frame)
{
    QImage image(540, 720, QImage::Format_Grayscale8);
    image.fill(0);
    const QByteArray text = "SIMULATED " + QByteArray::number(frame).rightJustified(6, '0');
    sim::stampText(image.bits(), text.constData());
    return stampOf(image.scaled(360, 480, Qt::KeepAspectRatio, Qt::FastTransformation));
}

/// Looks at each pair of pictures that a window paints.
class PictureWatcher : public QObject
{
public:
    explicit PictureWatcher(const MainWindow &window)
        : palmprint(window.findChild<QLabel *>("rgbImgLabel")),
          vein(window.findChild<QLabel *>("irImgLabel"))
    {
        palmprint->installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            look();
        return false;
    }

    int frames = 0;
    int broken = 0;

private:
    /// Both pictures must carry the stamp of one frame, at its place.
    void look()
    {
        constexpr int MostSkipped = 50;
        const QImage stamp = stampOf(palmprint->pixmap(Qt::ReturnByValue).toImage());
        if (stamp == last)
            return;
        last = stamp;
        int next = number + 1;
        while (next <= number + MostSkipped && stampOf(next) != stamp)
            ++next;
        const bool whole = next <= number + MostSkipped &&
                           stampOf(vein->pixmap(Qt::ReturnByValue).toImage()) == stamp;
        number = whole ? next : number;
        ++(whole ? frames : broken);
    }

    QLabel *palmprint;
    QLabel *vein;
    QImage last;
    int number = 0; ///< of the last whole frame
};

/// Stays open when a user has been created.
class LastingAddUserDlg : public AddUserDlg
{
public:
    using AddUserDlg::AddUserDlg;

protected:
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

/// Notes whether the busy cursor shows up.
class CursorWatcher : public QObject
{
    Q_OBJECT

public:
    CursorWatcher()
    {
        connect(&timer, SIGNAL(timeout()), this, SLOT(look()));
        timer.start(5);
        clock.start();
    }
    bool seen = false;
    qint64 firstSeen = -1; ///< ms after the watcher's start

private slots:
    void look()
    {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        if (!seen && cursor && cursor->shape() == Qt::BusyCursor)
            firstSeen = clock.elapsed();
        seen = firstSeen >= 0;
    }

private:
    QTimer timer;
    QElapsedTimer clock;
};

/// Sends a command of its own while another one waits.
class Intruder : public QObject
{
    Q_OBJECT

public:
    explicit Intruder(CmdClient *cmdClient)
        : client(cmdClient)
    {
        QTimer::singleShot(0, this, SLOT(intrude()));
    }
    bool wasNested = false;
    bool cursorStayed = false;

private slots:
    void intrude()
    {
        if (!client->isWaiting() || !QGuiApplication::overrideCursor()) {
            QTimer::singleShot(1, this, SLOT(intrude()));
            return;
        }
        uint8_t mode = 0;
        wasNested = client->getMode(&mode) && client->isWaiting();
        cursorStayed = QGuiApplication::overrideCursor() != nullptr;
    }

private:
    CmdClient *client;
};

const char *const WindowButtons[] = {"recgBtnClickAct", "getModeBtnClickAct",
                                     "getUserListBtnClickAct", "idealBtnClickAct",
                                     "getSysInfoBtnClickAct"};

} // namespace

// Many replies take longer than a tick of the preview, so that ticks fall due meanwhile.
void TestTraffic::keepsCommandsAndPreviewApart()
{
    constexpr int WindowRounds = 50; // of five commands
    constexpr int Users = 125;       // two commands each
    sim::TerminalOptions options;
    options.pushPort = freePort();
    for (const int command : {0x04, 0x05, 0x10, 0x17, 0x30, 0x33})
        options.faults.faults.append({sim::Fault::Kind::Delay, 15, command, 0, 1, 0, 0.4});
    sim::Terminal terminal(options);
    QVERIFY(terminal.listen(QHostAddress::LocalHost, 0));
    MainWindow window;
    const auto click = [](const QWidget &parent, const char *button) {
        parent.findChild<QPushButton *>(button)->click();
        QCoreApplication::processEvents();
    };
    auto *log = window.findChild<QTextEdit *>("infoText");
    const auto takeLines = [&] {
        QStringList lines = log->toPlainText().split('\n', Qt::SkipEmptyParts);
        log->clear();
        return lines;
    };
    window.findChild<QLineEdit *>("hostEdit")->setText("127.0.0.1");
    window.findChild<QSpinBox *>("portSpinBox")->setValue(terminal.port());
    window.show();
    click(window, "openBtnClickAct");
    takeLines();

    for (const char *button : WindowButtons)
        click(window, button);
    const QStringList round = takeLines();
    QCOMPARE(round.filter(QRegularExpression("^(UID:|Device |MAC )")).size(), 8 + 3);

    PictureWatcher watcher(window);
    click(window, "showMixBtnClickAct");
    QTRY_VERIFY(watcher.frames > 2);
    QStringList expected;
    for (int i = 0; i < WindowRounds; ++i) {
        const int frames = watcher.frames;
        for (const char *button : WindowButtons)
            click(window, button);
        QVERIFY(QTest::qWaitFor([&] { return watcher.frames > frames; }));
        expected += round;
    }
    QCOMPARE(takeLines(), expected);

    const size_t usersBefore = terminal.device().state.users.size();
    const BoxUser user([&](QWidget *dialog) {
        const auto *id = dialog->findChild<QSpinBox *>();
        dialog->findChild<QLineEdit *>("userNameEdit")->setText("Ann");
        for (int i = 0; i < Users; ++i) {
            const int frames = watcher.frames;
            click(*dialog, "getEmptyUIDBtnClickAct");
            QCOMPARE(terminal.device().state.users.count(quint32(id->value())), size_t{0});
            click(*dialog, "createBtnClickAct");
            QCOMPARE(terminal.device().state.users.count(quint32(id->value())), size_t{1});
            QVERIFY(QTest::qWaitFor([&] { return watcher.frames > frames; }));
        }
        static_cast<QDialog *>(dialog)->done(0);
    });
    LastingAddUserDlg dialog(window.findChild<CmdClient *>(), log, &window);
    dialog.exec();
    expected.clear();
    for (int i = 0; i < Users; ++i)
        expected << "Empty user ID getting succeeded."
                 << "User created.";
    QCOMPARE(takeLines(), expected);
    QCOMPARE(terminal.device().state.users.size(), usersBefore + Users);
    QCOMPARE(watcher.broken, 0);
    QCOMPARE(window.findChild<QPushButton *>("showMixBtnClickAct")->text(),
             QString("Stop Collecting"));
}

void TestTraffic::showsTheBusyCursor_data()
{
    QTest::addColumn<bool>("answered");
    QTest::addColumn<int>("delay");
    QTest::newRow("prompt") << true << 0;
    QTest::newRow("delayed") << true << 500;
    QTest::newRow("unanswered") << false << 0;
}

void TestTraffic::showsTheBusyCursor()
{
    QFETCH(bool, answered);
    QFETCH(int, delay);
    Link link;
    QVERIFY(!QGuiApplication::overrideCursor());
    QList<QByteArray> answer;
    if (answered)
        answer.append(hex("EAC5 000001 04"));
    link.peer.expect({hex("EAC5 000001 05"), answer, false, delay});
    const CursorWatcher watcher;
    uint8_t mode = 0;
    QCOMPARE(link.client.getMode(&mode), answered);
    QVERIFY(!QGuiApplication::overrideCursor());
    if (!answered || delay > 0)
        QVERIFY(watcher.seen);
    QVERIFY(!watcher.seen || watcher.firstSeen >= 200);
}

void TestTraffic::nestsTheBusyCursor()
{
    Link link;
    link.peer.expect({hex("EAC5 000001 00"), {}});
    link.peer.expect({hex("EAC5 000001 05"), {hex("EAC5 000001 04")}, false, 300});
    const Intruder intruder(&link.client);
    uint16_t distance = 0;
    link.client.getTofDistance(&distance);
    QVERIFY(intruder.wasNested);
    QVERIFY(intruder.cursorStayed);
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(TestTraffic)
#include "tst_traffic.moc"
