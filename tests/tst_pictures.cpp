#include "app/language.h"
#include "testkit/windowrig.h"

#include <QtTest>
#include <QtWidgets>

class TestPictures : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("LC_ALL", "fa_IR.UTF-8"); } // a locale with other digits

private slots:
    void initTestCase() { useLanguage(); }
    void init() { QVERIFY(folder().removeRecursively() && folder().mkpath(".")); }
    void cleanup() { folder().removeRecursively(); }
    void startsStopsAndFails_data();
    void startsStopsAndFails();
    void followsTheConnection();
    void showsFramesAndTheirPixels();
    void savesPng();
    void savesRaw();

private:
    static QDir folder() { return QCoreApplication::applicationDirPath() + "/img"; }
};

namespace {

struct Preview : WindowRig
{
    Preview()
    {
        servePictures();
        peer.serve(hex("EAC5 000001 00"), hex("EAC5 000002 012C"));
    }

    /// Runs the preview of this button until it has shown a picture.
    void collect(const QByteArray &button) const
    {
        const int before = peer.servedCount();
        click(button);
        QTRY_VERIFY(peer.servedCount() >= before + 2);
        click(button);
    }
    /// Moves the mouse to a position on the palmprint's picture and returns the readout.
    QString pixel(QPoint position) const
    {
        QMouseEvent move(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(find<QLabel>("rgbImgLabel"), &move);
        return labelText("pixelReadoutLabel");
    }
    QString tip(const QByteArray &name) const
    {
        QHelpEvent hint(QEvent::ToolTip, {}, {});
        QCoreApplication::sendEvent(find<QWidget>(name), &hint);
        return find<QWidget>(name)->toolTip();
    }

    const QTimer *timer = window.findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
};

QImage imageOf(const QByteArray &frame)
{
    QImage image(540, 720, QImage::Format_Grayscale8);
    std::copy(frame.begin(), frame.end(), image.bits());
    return image;
}

} // namespace

void TestPictures::startsStopsAndFails_data()
{
    QTest::addColumn<QString>("failure");
    QTest::newRow("showRgbBtnClickAct") << "Palmprint image acquisition failed.";
    QTest::newRow("showIrBtnClickAct") << "Palm vein image acquisition failed.";
    QTest::newRow("showMixBtnClickAct") << "Image acquisition failed.";
    QTest::newRow("getTofDistBtnClickAct") << "Image acquisition failed.";
}

void TestPictures::startsStopsAndFails()
{
    QFETCH(QString, failure);
    const QByteArray button = QTest::currentDataTag();
    const bool isHeight = button == "getTofDistBtnClickAct";
    Preview preview;
    preview.connectToPeer();
    const QString idle = preview.caption(button);
    preview.click(button);
    QCOMPARE(preview.caption(button), QString(isHeight ? "stop collecting" : "Stop Collecting"));
    QCOMPARE(preview.isUsable("showMixBtnClickAct"), button == "showMixBtnClickAct");
    QCOMPARE(preview.timer->interval(), isHeight ? 100 : 10);
    QTRY_VERIFY(preview.peer.servedCount() >= 3);
    QVERIFY(!isHeight || preview.infoLines().contains("TOF: 300"));
    preview.click(button);
    QCOMPARE(preview.caption(button), idle);
    QVERIFY(preview.isUsable("showMixBtnClickAct") && !preview.timer->isActive());

    preview.peer.closeConnection();
    QTRY_VERIFY(preview.tip("openBtnClickAct").startsWith("Socket: not connected"));
    preview.click("clearInfoTextBtnClickAct");
    preview.click(button);
    QTRY_VERIFY(!preview.timer->isActive());
    QCOMPARE(preview.infoLines(), (QStringList{"Fail to send the data packet：-1", failure}));
    preview.click(button); // only restores the caption
    QCOMPARE(preview.caption(button), idle);
}

void TestPictures::followsTheConnection()
{
    Preview preview;
    QCOMPARE(preview.tip("openBtnClickAct"),
             QString("Socket: not connected\nLast reply: none yet"));
    QMetaObject::invokeMethod(&preview.window, "enableConnAct");
    preview.click("showIrBtnClickAct");
    preview.connectToPeer(); // only a repeated connect stops the preview
    QTRY_VERIFY(preview.tip("irImgLabel") != preview.tip("rgbImgLabel"));
    const QRegularExpression connected("\\ASocket: connected\nLast reply: \\d+\\.\\d ms\\z");
    QVERIFY(connected.match(preview.tip("openBtnClickAct")).hasMatch());

    const int before = preview.peer.servedCount();
    // The peer would report a request before its answer, while the preview's timer expires.
    preview.peer.expect({hex("EAC5 000001 10"), {hex("EAC5 000003 00"), "{}"}, false, 200});
    preview.click("getUserListBtnClickAct");
    QCOMPARE(preview.peer.servedCount(), before);
    QCOMPARE(preview.infoLines().value(1), QString("Data reading succeeded：2"));
    QTRY_VERIFY(preview.peer.servedCount() > before + 1);
    preview.connectToPeer();
    QVERIFY(!preview.timer->isActive());
    QTRY_COMPARE(preview.tip("irImgLabel"), QString("540 × 720 pixels\n0 frames/s\n0.0 MB/s"));
    preview.click("showMixBtnClickAct");
    preview.click("closeBtnClickAct");
    QVERIFY(!preview.timer->isActive());
}

// The readout does not change before the first frame and outside of the picture.
void TestPictures::showsFramesAndTheirPixels()
{
    Preview preview;
    preview.connectToPeer();
    const QImage empty = preview.picture("rgbImgLabel");
    QCOMPARE(empty.pixel(0, 0), qRgb(192, 192, 192));
    preview.collect("showIrBtnClickAct");
    QCOMPARE(preview.picture("rgbImgLabel"), empty);
    QCOMPARE(preview.pixel({10, 11}), QString("Pix(X, Y): value"));
    preview.collect("showMixBtnClickAct");
    const QImage scaled = imageOf(frame(1)).scaled(360, 480); // the nearest pixels
    QCOMPARE(preview.picture("rgbImgLabel"), scaled.convertToFormat(empty.format()));
    for (const QPoint point : {QPoint(359, 479), QPoint(360, 0), QPoint(0, 480), QPoint(5, -1)})
        QCOMPARE(preview.pixel(point), QString("Pt[359, 479]: 213"));

    // The keys move on from the last position, and not over the edge.
    const auto press = [&preview](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(preview.find<QLabel>("irImgLabel"), key, modifiers);
        return preview.labelText("pixelReadoutLabel");
    };
    press(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(press(Qt::Key_Left), QString("Pt[0, 10]: 72"));
    for (int i = 0; i < 36; ++i)
        press(Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(press(Qt::Key_Up), QString("Pt[359, 9]: 32"));
}

// A picture that has been shown is not saved, except by the joint button.
void TestPictures::savesPng()
{
    qputenv("TZ", "UTC");
    const auto now = [] {
        return QLocale::c().toString(QDateTime::currentDateTime(), "yyMMddHHmmss");
    };
    const QString before = now();
    Preview preview;
    preview.connectToPeer();
    preview.collect("showIrBtnClickAct");
    for (const QByteArray camera : {"Rgb", "Ir", "Mix"})
        preview.click("save" + camera + "PngBtnClickAct");
    preview.collect("showRgbBtnClickAct");
    preview.click("saveRgbPngBtnClickAct");

    const QString name = folder().entryList(QDir::Files).join(' ');
    const QString time = name.mid(3, 12);
    QVERIFY2(before <= time && time <= now(), qPrintable(name));
    const QString line = "Image saved: " + QCoreApplication::applicationDirPath() + "\\img\\";
    QStringList lines = preview.infoLines();
    const QString rgbTime = lines[0].mid(line.size() + 4, 12);
    QVERIFY2(before <= rgbTime && rgbTime <= time, qPrintable(lines[0]));
    QCOMPARE(lines, (QStringList{
                        line + "rgb_" + rgbTime + ".png", "Empty palm vein image, fail to save it.",
                        line + "ir_" + time + ".png", "Empty palmprint image, fail to save it."}));
    const QImage image(folder().filePath(name), "PNG");
    QCOMPARE(image.convertToFormat(QImage::Format_Grayscale8), imageOf(frame(4)));
}

// No suffix is added. A preview may run while the file dialog is open.
void TestPictures::savesRaw()
{
    const QByteArray palmprint = frame(1);
    const QByteArray vein = frame(4);
    QByteArray joint;
    for (int row = 0; row < 720; ++row)
        joint += palmprint.mid(540 * row, 540) + vein.mid(540 * row, 540);
    const QString path = folder().filePath("Hände 手掌 \U0001F590 %1");
    Preview preview;
    preview.connectToPeer();
    const auto save = [&](const QByteArray &camera, const QString &name) {
        preview.click("save" + camera + "RawBtnClickAct", {[&](QWidget *dialog) {
                          const auto *files = qobject_cast<QFileDialog *>(dialog);
                          QCOMPARE(files->windowTitle(), "save " + name + " RAW image");
                          QCOMPARE(files->directory(), folder());
                          QCOMPARE(files->nameFilters(), QStringList("Text files (*.bin)"));
                          QFile::remove(path);
                          preview.collect("show" + camera + "BtnClickAct");
                          answer::file(path)(dialog);
                      }});
        return contentOf(path);
    };
    QVERIFY(save("Rgb", "palmprint") == palmprint);
    QVERIFY(save("Ir", "palm vein") == vein);
    QVERIFY(save("Mix", "joint") == joint);
    preview.click("saveMixRawBtnClickAct", {answer::close()});
    QCOMPARE(preview.infoLines().mid(2),
             (QStringList{"Image saved：" + path, "Fail to save the image."}));
}

QTEST_MAIN(TestPictures)
#include "tst_pictures.moc"
