#include "app/appearance.h"
#include "testkit/modaldriver.h"
#include "testkit/windowrig.h"
#include "testkit/windowwalk.h"

#include <QIcon>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QTextEdit>
#include <QWindow>
#include <QtTest>

/// Tests on a virtual X11 screen. SCREEN_FITS=1 means that the main window fits without scrolling;
/// SCREEN_SCALE is the scale factor.
class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareAppearance(); }
    void scales();
    void showsWholeWindows_data();
    void showsWholeWindows();
    void opensDialogsBesideTheLogs();
};

void TestScreens::scales()
{
    WindowRig rig;
    rig.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    const double scale = qEnvironmentVariable("SCREEN_SCALE").toDouble();
    QCOMPARE(rig.window.devicePixelRatioF(), scale);
    const QPixmap icon = QApplication::windowIcon().pixmap(rig.window.windowHandle(), {32, 32});
    QCOMPARE(icon.width(), qRound(32 * scale));

    // A frame is shown at full resolution if the screen has enough pixels.
    rig.servePictures();
    rig.connectToPeer();
    rig.click("showRgbBtnClickAct");
    auto *picture = rig.find<QLabel>("rgbImgLabel");
    QTRY_COMPARE(picture->pixmap(Qt::ReturnByValue).size(),
                 scale > 1 ? QSize(540, 720) : QSize(360, 480));
    QCOMPARE(picture->size(), QSize(360, 480));
}

void TestScreens::showsWholeWindows_data()
{
    QTest::addColumn<MakeWindow>("make");
    for (const WindowKind &kind : windowKinds())
        QTest::newRow(kind.name) << kind.make;
}

void TestScreens::showsWholeWindows()
{
    QFETCH(MakeWindow, make);
    const DialogRig rig(make);
    QWidget *const window = rig.dialog.get();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    const QRect available = window->screen()->availableGeometry();
    QTRY_VERIFY(available.contains(window->frameGeometry()));
    if (qobject_cast<MainWindow *>(window)) {
        const bool fits = qEnvironmentVariableIntValue("SCREEN_FITS") == 1;
        QCOMPARE(window->findChildren<QScrollArea *>().isEmpty(), fits);
        if (fits)
            QCOMPARE(window->size(), window->sizeHint().boundedTo(window->maximumSize()));
    }
    QTRY_VERIFY(focusableIn(window).size() >= 2); // moved controls are shown with the next events
    const QList<QWidget *> controls = focusableIn(window);
    const QSet<QWidget *> reached = tabThrough(controls);
    for (QWidget *control : controls)
        QVERIFY2(reached.contains(control), qPrintable(control->objectName()));
}

void TestScreens::opensDialogsBesideTheLogs()
{
    WindowRig rig;
    rig.window.show();
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    QMetaObject::invokeMethod(&rig.window, "enableConnAct");
    for (const char *button : {"devCfgAct", "sysCfgBtnClickAct", "delUserBtnClickAct"}) {
        const ModalDriver driver([&](QWidget *dialog) {
            const QRect place = dialog->frameGeometry();
            QVERIFY2(dialog->screen()->availableGeometry().contains(place), button);
            for (const char *name : {"infoText", "watchText"}) {
                const auto *log = rig.find<QTextEdit>(name);
                const QPoint corner = log->mapToGlobal({});
                QVERIFY2(!log->visibleRegion().translated(corner).intersects(place), button);
            }
            dialog->close();
        });
        rig.click(button);
    }
}

int main(int argc, char *argv[])
{
    prepareScaling();
    QApplication application(argc, argv);
    TestScreens test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_screens.moc"
