#include "app/appearance.h"
#include "app/language.h"
#include "testkit/windowrig.h"
#include "testkit/windowwalk.h"
#include "widgets/screenfit.h"

#include <QtTest>
#include <QtWidgets>

Q_DECLARE_METATYPE(const WindowKind *)

namespace {

constexpr int ArrowWidth = 20; // at least, in a combo box

QString shownText(const QWidget *widget)
{
    return widget->property(widget->inherits("QGroupBox") ? "title" : "text").toString().trimmed();
}

bool fits(const QWidget *widget, const QString &text, int reserved = 0)
{
    const QFontMetrics metrics(widget->font());
    QSize needed(metrics.horizontalAdvance(text) + reserved, metrics.height());
    if (widget->property("wordWrap").toBool())
        needed = metrics.boundingRect(widget->rect(), Qt::TextWordWrap, text).size();
    return needed.boundedTo(widget->size()) == needed;
}

bool changesByWheel(QSpinBox *box)
{
    box->setValue(box->minimum());
    QWheelEvent event({}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(box, &event);
    return box->value() != box->minimum();
}

void listWindows()
{
    QTest::addColumn<const WindowKind *>("kind");
    QTest::addColumn<QString>("language");
    for (const WindowKind &kind : windowKinds()) {
        for (const char *language : {"en-GB", "zh-CN"})
            QTest::addRow("%s-%s", kind.name, language) << &kind << QString(language);
    }
}

} // namespace

/// Requirements for every window in every language, without a display and on screens of several
/// sizes and scales.
class TestWindows : public QObject
{
    Q_OBJECT

public:
    static void initMain() { prepareScaling(); }

private slots:
    void initTestCase() { prepareAppearance(); }
    void cleanup() { qDeleteAll(qApp->findChildren<QTranslator *>()); }
    void showsWholeTexts_data() { listWindows(); }
    void showsWholeTexts();
    void canBeUsedByKeyboard_data() { listWindows(); }
    void canBeUsedByKeyboard();
    void followsTheFont();
    void usesTheScreen();
    void usesTheFirstKnownLanguage();
};

// No text is cut, and no widgets overlap.
void TestWindows::showsWholeTexts()
{
    QFETCH(const WindowKind *, kind);
    QFETCH(QString, language);
    useLanguage({language});
    const DialogRig rig(kind->make);
    QVERIFY(language == "zh-CN" || rig.dialog->windowTitle() == kind->title);
    QVERIFY(!kind->size.isValid() || rig.dialog->size() == kind->size);
    QCOMPARE(rig.dialog->minimumSize(), rig.dialog->maximumSize());

    for (const QWidget *widget : rig.dialog->findChildren<QWidget *>()) {
        QVERIFY2(fits(widget, shownText(widget)), qPrintable(shownText(widget)));
        const auto *combo = qobject_cast<const QComboBox *>(widget);
        for (int i = 0; combo && !combo->inherits("ElidingComboBox") && i < combo->count(); ++i)
            QVERIFY2(fits(combo, combo->itemText(i), ArrowWidth), qPrintable(combo->itemText(i)));
        QRegion covered;
        for (const QWidget *child :
             widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!widget->layout() || !child->isVisible())
                continue;
            QVERIFY2(widget->rect().contains(child->geometry()), qPrintable(child->objectName()));
            QVERIFY2(!covered.intersects(child->geometry()), qPrintable(child->objectName()));
            covered += child->geometry();
        }
    }
}

// The Tab key reaches each control, on a screen that is too small as well, and each control has a
// name for screen readers.
void TestWindows::canBeUsedByKeyboard()
{
    QFETCH(const WindowKind *, kind);
    QFETCH(QString, language);
    useLanguage({language});
    const DialogRig rig(kind->make);
    QWidget *const window = rig.dialog.get();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    if (QGuiApplication::platformName() != "offscreen") // which reports a small screen
        QTRY_VERIFY(window->screen()->availableGeometry().contains(window->frameGeometry()));
    QTRY_VERIFY(focusableIn(window).size() >= 2); // moved controls are shown with the next events
    const QList<QWidget *> controls = focusableIn(window);
    for (QWidget *control : controls) {
        const auto name = QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
        // Qt uses the group's title for a control without a name.
        const bool isBorrowed =
            control->accessibleName().isEmpty() && name == shownText(control->parentWidget());
        QVERIFY2(!isBorrowed && !name.isEmpty(), qPrintable(control->objectName()));
    }
    for (QLabel *picture : window->findChildren<QLabel *>(QRegularExpression("ImgLabel$")))
        QVERIFY(controls.contains(picture));
    QCOMPARE(unreachedByTab(controls), QStringList());

    auto *fit = window->findChild<ScreenFit *>();
    if (!fit)
        return; // a small window of fixed content
    const QSize full = window->size();
    // At a higher scale the main window is larger than the test's screens.
    const bool isWhole = window->devicePixelRatioF() == 1 || !window->inherits("MainWindow");
    fit->fitInto(full);
    QCOMPARE(window->findChild<QScrollArea *>() == nullptr, isWhole);
    fit->fitInto(full * 2 / 3);
    QCOMPARE(window->maximumSize(), full * 2 / 3);
    QTRY_COMPARE(focusableIn(window), controls);
    QCOMPARE(unreachedByTab(controls), QStringList());
    auto *port = window->findChild<QSpinBox *>("portSpinBox"); // of the main window
    QVERIFY(!port || !changesByWheel(port));
    fit->fitInto(full);
    QCOMPARE(window->size(), full);
    QVERIFY(!port || changesByWheel(port) == isWhole);
    QVERIFY(!isWhole || window->findChild<QScrollArea *>()->widget()->size() == full);
}

void TestWindows::followsTheFont()
{
    MainWindow window;
    window.show();
    const int before = window.height();
    QFont larger = QApplication::font();
    larger.setPixelSize(2 * larger.pixelSize());
    QApplication::setFont(larger);
    QTRY_VERIFY(window.height() > before);
    QCOMPARE(window.size(), window.sizeHint());
    prepareAppearance();
}

// Pictures use all pixels of a screen with a higher scale, and dialogs leave the logs uncovered.
void TestWindows::usesTheScreen()
{
    if (QGuiApplication::platformName() == "offscreen")
        return; // the main window is larger than the screen of this platform
    WindowRig rig;
    rig.window.show();
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    rig.servePictures();
    rig.connectToPeer();
    rig.click("showRgbBtnClickAct");
    QTRY_COMPARE(rig.find<QLabel>("rgbImgLabel")->pixmap(Qt::ReturnByValue).width(),
                 qEnvironmentVariable("QT_SCALE_FACTOR") == "1" ? 360 : 540);
    const auto check = [&rig](QWidget *dialog) {
        const QRect place = dialog->frameGeometry();
        QVERIFY(dialog->screen()->availableGeometry().contains(place));
        for (const char *name : {"infoText", "watchText"}) {
            const auto *log = rig.find<QTextEdit>(name);
            const QPoint corner = log->mapToGlobal({});
            QVERIFY2(!log->visibleRegion().translated(corner).intersects(place), name);
        }
        dialog->close();
    };
    for (const char *button : {"devCfgAct", "sysCfgBtnClickAct", "delUserBtnClickAct"})
        rig.click(button, {check});
}

void TestWindows::usesTheFirstKnownLanguage()
{
    for (const auto &[languages, isChinese] :
         {std::pair("en-US zh-CN", false), std::pair("fr-FR zh-CN en-US", true),
          std::pair("zh-TW", false), std::pair("zh-Hans-CN", true), std::pair("zh-SG", true)}) {
        cleanup();
        useLanguage(QString(languages).split(' '));
        QCOMPARE(MainWindow::tr("Disconnect") != "Disconnect", isChinese);
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel") != "Cancel", isChinese);
    }
    WindowRig rig;
    rig.connectToPeer();
    rig.click("closeBtnClickAct");
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect")); // never translated
    rig.click("closeBtnClickAct");
    QCOMPARE(rig.infoLines().size(), 2);
}

QTEST_MAIN(TestWindows)
#include "tst_windows.moc"
