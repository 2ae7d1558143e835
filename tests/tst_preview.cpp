#include "app/shownframe.h"
#include "testkit/windowrig.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTcpSocket>
#include <QTimer>
#include <QtTest>

namespace {

const QList<const char *> Buttons{"showRgbBtnClickAct", "showIrBtnClickAct", "showMixBtnClickAct",
                                  "getTofDistBtnClickAct"};

struct Preview : WindowRig
{
    Preview()
    {
        servePictures();
        peer.serve(hex("EAC5 000001 00"), hex("EAC5 000002 012C"));
        connectToPeer();
    }

    const QTimer *timer() const
    {
        return window.findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }
    bool isRunning() const { return timer()->isActive(); }
    /// Returns one letter for each of `Buttons`; '-' stands for a button that is disabled within
    /// its group.
    QString usable() const
    {
        QString letters;
        for (int i = 0; i < Buttons.size(); ++i) {
            const auto *button = find<QPushButton>(Buttons[i]);
            letters += button->isEnabledTo(button->parentWidget()) ? "PVJH"[i] : '-';
        }
        return letters;
    }
    /// Moves the mouse to a position on a camera's picture and returns the readout.
    QString pixel(const QByteArray &label, QPoint position) const
    {
        QMouseEvent move(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(find<QLabel>(label), &move);
        return find<QLabel>("pixelReadoutLabel")->text();
    }
    QRgb shown(const QByteArray &label) const
    {
        return find<QLabel>(label)->pixmap(Qt::ReturnByValue).toImage().pixel(0, 0);
    }
};

const QRgb Empty = qRgb(192, 192, 192);

} // namespace

class TestPreview : public QObject
{
    Q_OBJECT

private slots:
    void startsStopsAndFails_data();
    void startsStopsAndFails();
    void endsWithTheConnection_data();
    void endsWithTheConnection();
    void continuesAfterTheFirstConnect();
    void readsPixels_data();
    void readsPixels();
    void readsPixelsByKeyboard();
    void showsRatesInTooltips();
    void scalesFramesLikeQt();
    void logsThePalmHeight();
    void pausesWhileACommandWaits();
};

void TestPreview::startsStopsAndFails_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("running");
    QTest::addColumn<QString>("usable");
    QTest::addColumn<QString>("failure");
    const auto row = [](int button, const char *running, const char *usable, const char *failure) {
        QTest::newRow(Buttons[button]) << button << running << usable << failure;
    };
    row(0, "Stop Collecting", "P---", "Palmprint image acquisition failed.");
    row(1, "Stop Collecting", "-V--", "Palm vein image acquisition failed.");
    row(2, "Stop Collecting", "--J-", "Image acquisition failed.");
    row(3, "stop collecting", "---H", "Image acquisition failed.");
}

void TestPreview::startsStopsAndFails()
{
    QFETCH(int, button);
    QFETCH(QString, failure);
    Preview preview;
    const QString idle = preview.caption(Buttons[button]);
    QCOMPARE(preview.usable(), QString("PVJH"));
    QVERIFY(!preview.isRunning());

    preview.click(Buttons[button]);
    QTEST(preview.caption(Buttons[button]), "running");
    QTEST(preview.usable(), "usable");
    QCOMPARE(preview.timer()->interval(), button == 3 ? 100 : 10);
    QTRY_VERIFY(preview.peer.servedCount() >= 3);
    preview.click(Buttons[button]);
    QCOMPARE(preview.caption(Buttons[button]), idle);
    QCOMPARE(preview.usable(), QString("PVJH"));
    QVERIFY(!preview.isRunning());

    preview.peer.closeConnection();
    const auto *socket = preview.window.findChild<QTcpSocket *>();
    QTRY_COMPARE(socket->state(), QAbstractSocket::UnconnectedState);
    preview.click("clearInfoTextBtnClickAct");
    preview.click(Buttons[button]);
    QTRY_VERIFY(!preview.isRunning());
    const QStringList lines{"Fail to send the data packet：-1", failure};
    QCOMPARE(preview.lines("infoText"), lines);
    QTEST(preview.caption(Buttons[button]), "running");
    QCOMPARE(preview.usable(), QString("PVJH"));

    preview.click(Buttons[button]); // only restores the caption
    QVERIFY(!preview.isRunning());
    QCOMPARE(preview.caption(Buttons[button]), idle);
    QCOMPARE(preview.lines("infoText"), lines);
}

void TestPreview::endsWithTheConnection_data()
{
    QTest::addColumn<bool>("announces");
    QTest::newRow("closeBtnClickAct") << false;
    QTest::newRow("openBtnClickAct") << true;
}

void TestPreview::endsWithTheConnection()
{
    QFETCH(bool, announces);
    Preview preview;
    preview.click("showIrBtnClickAct");
    QTRY_VERIFY(preview.peer.servedCount() >= 1);
    if (announces)
        preview.expectAnnouncement();
    preview.click(QTest::currentDataTag());
    QVERIFY(!preview.isRunning());
    QCOMPARE(preview.usable(), QString("PVJH"));
    QCOMPARE(preview.caption("showIrBtnClickAct"), QString("Stop Collecting"));
}

// Only a repeated connect stops the preview.
void TestPreview::continuesAfterTheFirstConnect()
{
    WindowRig rig;
    rig.servePictures();
    QMetaObject::invokeMethod(&rig.window, "enableConnAct");
    rig.click("showIrBtnClickAct");
    rig.connectToPeer();
    const int before = rig.peer.servedCount();
    QTRY_VERIFY(rig.peer.servedCount() > before + 1);
}

void TestPreview::readsPixels_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("otherLabel"); ///< empty: both show a picture
    QTest::addColumn<QStringList>("readouts");
    const QByteArray palmprint("rgbImgLabel");
    const QByteArray vein("irImgLabel");
    const QStringList ofPalmprint{"Pt[0, 0]: 1", "Pt[10, 11]: 122", "Pt[359, 479]: 213"};
    const QStringList ofVein{"Pt[0, 0]: 4", "Pt[10, 11]: 125", "Pt[359, 479]: 216"};
    QTest::newRow("showRgbBtnClickAct") << palmprint << vein << ofPalmprint;
    QTest::newRow("showIrBtnClickAct") << vein << palmprint << ofVein;
    QTest::newRow("showMixBtnClickAct") << palmprint << QByteArray() << ofPalmprint;
    QTest::newRow("showMixBtnClickAct, vein") << vein << QByteArray() << ofVein;
}

// The readout does not change before the first frame or outside of the picture.
void TestPreview::readsPixels()
{
    QFETCH(QByteArray, label);
    QFETCH(QByteArray, otherLabel);
    QFETCH(QStringList, readouts);
    const QByteArray button = QByteArray(QTest::currentDataTag()).split(',').first();

    Preview preview;
    QCOMPARE(preview.pixel(label, {10, 11}), QString("Pix(X, Y): value"));
    QCOMPARE(preview.shown(label), Empty);
    preview.click(button);
    QTRY_VERIFY(preview.shown(label) != Empty);
    preview.click(button);

    if (!otherLabel.isEmpty()) {
        QCOMPARE(preview.shown(otherLabel), Empty);
        QCOMPARE(preview.pixel(otherLabel, {10, 11}), QString("Pix(X, Y): value"));
    }
    QCOMPARE(preview.pixel(label, {0, 0}), readouts[0]);
    QCOMPARE(preview.pixel(label, {10, 11}), readouts[1]);
    QCOMPARE(preview.pixel(label, {359, 479}), readouts[2]);
    for (const QPoint outside : {QPoint(360, 0), QPoint(0, 480), QPoint(-1, 5), QPoint(5, -1)})
        QCOMPARE(preview.pixel(label, outside), readouts[2]);
    const int grey = readouts[0].rightRef(1).toInt();
    QCOMPARE(preview.shown(label), qRgb(grey, grey, grey));
}

void TestPreview::readsPixelsByKeyboard()
{
    Preview preview;
    preview.click("showRgbBtnClickAct");
    QTRY_VERIFY(preview.shown("rgbImgLabel") != Empty);
    preview.click("showRgbBtnClickAct");
    auto *label = preview.find<QLabel>("rgbImgLabel");
    const auto *readout = preview.find<QLabel>("pixelReadoutLabel");
    preview.pixel("rgbImgLabel", {9, 12}); // the keys move on from the mouse's last position
    QTest::keyClick(label, Qt::Key_Right);
    QTest::keyClick(label, Qt::Key_Up);
    QCOMPARE(readout->text(), QString("Pt[10, 11]: 122"));
    QTest::keyClick(label, Qt::Key_Left, Qt::ControlModifier);
    QTest::keyClick(label, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(label, Qt::Key_Up);
    QTest::keyClick(label, Qt::Key_Up); // already at the edge
    QCOMPARE(readout->text(), QString("Pt[0, 0]: 1"));
    for (int i = 0; i < 48; ++i) {
        QTest::keyClick(label, Qt::Key_Right, Qt::ControlModifier);
        QTest::keyClick(label, Qt::Key_Down, Qt::ControlModifier);
    }
    QCOMPARE(readout->text(), QString("Pt[359, 479]: 213"));
}

void TestPreview::showsRatesInTooltips()
{
    Preview preview;
    const auto tip = [&](const QByteArray &name) {
        QHelpEvent hint(QEvent::ToolTip, {}, {});
        auto *widget = preview.find<QWidget>(name);
        QCoreApplication::sendEvent(widget, &hint);
        return widget->toolTip();
    };
    const QString still("540 × 720 pixels\n0 frames/s\n0.0 MB/s");
    QCOMPARE(tip("rgbImgLabel"), still);
    QVERIFY(QRegularExpression("\\ASocket: connected\nLast reply: \\d+\\.\\d ms\\z")
                .match(tip("openBtnClickAct"))
                .hasMatch());
    preview.click("showIrBtnClickAct");
    const auto framesIn = [](const QString &text) {
        return text.section('\n', 1).section(' ', 0, 0).toInt();
    };
    QTRY_VERIFY(framesIn(tip("irImgLabel")) >= 3);
    const QString moving = tip("irImgLabel");
    QCOMPARE(moving.section('\n', 2), QString::number(framesIn(moving) * 0.3888, 'f', 1) + " MB/s");
    QCOMPARE(tip("rgbImgLabel"), still);
    preview.click("showIrBtnClickAct");
    QTRY_COMPARE(tip("irImgLabel"), still);

    preview.click("closeBtnClickAct");
    QVERIFY(tip("openBtnClickAct").startsWith("Socket: not connected\nLast reply: "));
    const MainWindow unused;
    auto *button = unused.findChild<QPushButton *>("openBtnClickAct");
    QHelpEvent hint(QEvent::ToolTip, {}, {});
    QCoreApplication::sendEvent(button, &hint);
    QCOMPARE(button->toolTip(), QString("Socket: not connected\nLast reply: none yet"));
}

void TestPreview::scalesFramesLikeQt()
{
    const QByteArray bytes = frame(1);
    const auto *data = reinterpret_cast<const uint8_t *>(bytes.constData());
    const QImage captured(data, 540, 720, 540, QImage::Format_Grayscale8);
    const QImage scaled = captured.scaled(360, 480, Qt::KeepAspectRatio, Qt::FastTransformation);
    QCOMPARE(shownFrame(data), scaled.convertToFormat(QImage::Format_RGB32));
}

void TestPreview::logsThePalmHeight()
{
    Preview preview;
    preview.click("getTofDistBtnClickAct");
    QTRY_COMPARE(preview.lines("infoText").mid(0, 2), (QStringList{"TOF: 300", "TOF: 300"}));
}

// The peer would report a request before its answer, while the preview's timer expires.
void TestPreview::pausesWhileACommandWaits()
{
    Preview preview;
    preview.click("showRgbBtnClickAct");
    QTRY_VERIFY(preview.peer.servedCount() >= 1);
    const int before = preview.peer.servedCount();
    preview.peer.expect({hex("EAC5 000001 10"), {hex("EAC5 000003 00"), "{}"}, false, 200});
    preview.click("getUserListBtnClickAct");
    QCOMPARE(preview.peer.servedCount(), before);
    QCOMPARE(preview.lines("infoText"),
             (QStringList{"The loaded data count：3", "Data reading succeeded：2"}));
    QTRY_VERIFY(preview.peer.servedCount() > before + 1);
}

QTEST_MAIN(TestPreview)
#include "tst_preview.moc"
