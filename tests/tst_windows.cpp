#include "app/appearance.h"
#include "app/imglabel.h"
#include "app/language.h"
#include "testkit/windowrig.h"
#include "testkit/windowwalk.h"
#include "widgets/elidingcombobox.h"
#include "widgets/screenfit.h"

#include <QAccessible>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStyleFactory>
#include <QStyleOptionComboBox>
#include <QTranslator>
#include <QtTest>

/// Requirements for every window in every language.
class TestWindows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareAppearance(); }
    void cleanup();
    void showsWholeTexts_data() { listWindows(); }
    void showsWholeTexts();
    void canBeUsedByKeyboard_data() { listWindows(); }
    void canBeUsedByKeyboard();
    void fitsASmallScreen_data() { listWindows(); }
    void fitsASmallScreen();
    void followsTheFont();
    void isLegibleInDarkColours_data();
    void isLegibleInDarkColours();
    void togglesInEveryLanguage_data();
    void togglesInEveryLanguage();
    void usesTheFirstKnownLanguage_data();
    void usesTheFirstKnownLanguage();
    void writesWesternDigits();

private:
    static void listWindows();
};

namespace {

QString accessibleName(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

/// Returns the contrast ratio: 1 for equal colours, 21 for black on white.
double contrast(const QColor &one, const QColor &other)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return qMax(first, second) / qMin(first, second);
}

/// Turns the wheel over each control and returns whether a value has changed.
bool changesByWheel(const QWidget *window)
{
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        const char *value = widget->inherits("QComboBox")          ? "currentText"
                            : widget->inherits("QAbstractSpinBox") ? "text"
                                                                   : "objectName";
        for (const int turn : {-120, 120}) {
            const QVariant before = widget->property(value);
            QWheelEvent event({}, {}, {}, {0, turn}, {}, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(widget, &event);
            if (widget->property(value) != before)
                return true;
        }
    }
    return false;
}

/// Returns the strongest contrast between the most frequent colour and any other.
double strongestContrast(const QImage &picture)
{
    QHash<QRgb, int> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++pixels[picture.pixel(x, y)];
    }
    const auto most = std::max_element(
        pixels.keyValueBegin(), pixels.keyValueEnd(),
        [](const auto &one, const auto &other) { return one.second < other.second; });
    const QRgb ground = (*most).first;
    double strongest = 1;
    for (auto it = pixels.keyBegin(); it != pixels.keyEnd(); ++it)
        strongest = qMax(strongest, contrast(ground, *it));
    return strongest;
}

QPalette darkPalette()
{
    QPalette palette(QColor(45, 45, 45));
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::ButtonText, Qt::white);
    return palette;
}

} // namespace

void TestWindows::cleanup()
{
    qDeleteAll(qApp->findChildren<QTranslator *>());
    QApplication::setPalette(QPalette());
    QLocale::setDefault(QLocale::system());
}

void TestWindows::listWindows()
{
    QTest::addColumn<MakeWindow>("make");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QSize>("size");
    for (const WindowKind &kind : windowKinds()) {
        QTest::newRow(kind.name) << kind.make << "en-GB" << kind.title << kind.size;
        const QString chinese = QString(kind.name) + "-zh";
        QTest::newRow(qPrintable(chinese)) << kind.make << "zh-CN" << QString() << kind.size;
    }
}

// No text is clipped, and no widgets overlap.
void TestWindows::showsWholeTexts()
{
    QFETCH(MakeWindow, make);
    QFETCH(QString, language);
    QFETCH(QString, title);
    QFETCH(QSize, size);
    useLanguage({language});
    const DialogRig rig(make);
    const auto &window = rig.dialog;
    if (!title.isEmpty())
        QCOMPARE(window->windowTitle(), title);
    QCOMPARE(window->minimumSize(), window->maximumSize());
    if (size.isValid())
        QCOMPARE(window->size(), size);

    int texts = 0;
    const auto check = [&](const QWidget *widget, const QString &text) {
        const QFontMetrics metrics(widget->font());
        QSize needed(metrics.horizontalAdvance(text.trimmed()), metrics.height());
        if (widget->property("wordWrap").toBool())
            needed = metrics.boundingRect(widget->rect(), Qt::TextWordWrap, text).size();
        texts += text.isEmpty() ? 0 : 1;
        QVERIFY2(needed.width() <= widget->width() && needed.height() <= widget->height(),
                 qPrintable(text));
    };
    for (const QLabel *label : window->findChildren<QLabel *>())
        check(label, label->text());
    for (const QPushButton *button : window->findChildren<QPushButton *>())
        check(button, button->text());
    for (const QGroupBox *group : window->findChildren<QGroupBox *>())
        check(group, group->title());
    for (const QSpinBox *box : window->findChildren<QSpinBox *>())
        check(box->findChild<QLineEdit *>(), QString::number(box->maximum()));
    for (const QComboBox *combo : window->findChildren<QComboBox *>()) {
        if (qobject_cast<const ElidingComboBox *>(combo))
            continue;
        QStyleOptionComboBox option;
        option.initFrom(combo);
        const QRect field = combo->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                           QStyle::SC_ComboBoxEditField, combo);
        for (int i = 0; i < combo->count(); ++i)
            QVERIFY2(combo->fontMetrics().horizontalAdvance(combo->itemText(i)) <= field.width(),
                     qPrintable(combo->itemText(i)));
    }
    QVERIFY(texts >= 2);
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        const auto siblings =
            widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        const bool arranged = widget->layout();
        for (int i = 0; arranged && i < siblings.size(); ++i) {
            if (!siblings[i]->isVisible())
                continue;
            QVERIFY2(widget->rect().contains(siblings[i]->geometry()),
                     qPrintable(siblings[i]->objectName()));
            for (int k = 0; k < i; ++k)
                QVERIFY2(!siblings[i]->geometry().intersects(siblings[k]->geometry()),
                         qPrintable(siblings[i]->objectName() + ' ' + siblings[k]->objectName()));
        }
    }
}

// The Tab key reaches all controls in turn, and each control has a name for screen readers.
void TestWindows::canBeUsedByKeyboard()
{
    QFETCH(MakeWindow, make);
    QFETCH(QString, language);
    useLanguage({language});
    const DialogRig rig(make);
    QVERIFY(QTest::qWaitForWindowActive(rig.dialog.get()));
    const QList<QWidget *> controls = focusableIn(rig.dialog.get());
    QVERIFY(controls.size() >= 2);
    const QSet<QWidget *> reached = tabThrough(controls);
    for (QWidget *control : controls) {
        // Qt uses the group's title for a control without a name.
        const auto *group = qobject_cast<const QGroupBox *>(control->parentWidget());
        const bool borrowed = control->accessibleName().isEmpty() && group &&
                              accessibleName(control) == group->title();
        QVERIFY2(!borrowed && !accessibleName(control).trimmed().isEmpty(),
                 qPrintable(control->objectName()));
        QVERIFY2(reached.contains(control), qPrintable(control->objectName()));
    }
    QCOMPARE(QApplication::focusWidget(), controls.first());
    for (QWidget *picture : rig.dialog->findChildren<ImgLabel *>())
        QVERIFY(controls.contains(picture));
}

void TestWindows::fitsASmallScreen()
{
    QFETCH(MakeWindow, make);
    QFETCH(QString, language);
    useLanguage({language});
    const DialogRig rig(make);
    QVERIFY(QTest::qWaitForWindowActive(rig.dialog.get()));
    QWidget *const window = rig.dialog.get();
    auto *fit = window->findChild<ScreenFit *>();
    if (!fit)
        return; // a small window of fixed content
    const QSize full = window->size();
    const QList<QWidget *> controls = focusableIn(window);
    const bool turnsAtFullSize = changesByWheel(window);

    fit->fitInto(full);
    QCOMPARE(window->size(), full);
    QVERIFY(!window->findChild<QScrollArea *>());

    const QSize room(full.width() * 2 / 3, full.height() * 2 / 3);
    fit->fitInto(room);
    QCOMPARE(window->size(), room);
    QCOMPARE(window->maximumSize(), room);
    QTRY_COMPARE(focusableIn(window), controls);
    QVERIFY(!changesByWheel(window));
    const QSet<QWidget *> reached = tabThrough(controls);
    for (QWidget *control : controls)
        QVERIFY2(reached.contains(control), qPrintable(control->objectName()));

    fit->fitInto(full);
    QCOMPARE(window->size(), full);
    QCOMPARE(changesByWheel(window), turnsAtFullSize);
    controls.first()->setFocus();
    for (const QScrollArea *area : window->findChildren<QScrollArea *>())
        QCOMPARE(area->widget()->size(), full);
}

void TestWindows::followsTheFont()
{
    MainWindow window;
    window.show();
    const QSize before = window.size();
    const QFont font = QApplication::font();
    QFont larger = font;
    larger.setPixelSize(2 * font.pixelSize());
    QApplication::setFont(larger);
    QTRY_VERIFY(window.height() > before.height());
    QCOMPARE(window.size(), window.sizeHint());
    QApplication::setFont(font);
    QTRY_COMPARE(window.size(), before);
}

void TestWindows::isLegibleInDarkColours_data()
{
    QTest::addColumn<MakeWindow>("make");
    for (const WindowKind &kind : windowKinds())
        QTest::newRow(kind.name) << kind.make;
}

void TestWindows::isLegibleInDarkColours()
{
    QFETCH(MakeWindow, make);
    QApplication::setPalette(darkPalette());
    const DialogRig rig(make);
    const QImage picture = rig.dialog->grab().toImage();
    int texts = 0;
    for (const QWidget *widget : rig.dialog->findChildren<QWidget *>()) {
        const QString text = widget->property("text").toString();
        if (!widget->isVisible() || !widget->isEnabled() || text.trimmed().isEmpty())
            continue;
        const QRect place(widget->mapTo(rig.dialog.get(), QPoint()), widget->size());
        QVERIFY2(strongestContrast(picture.copy(place)) > 4.5, qPrintable(text));
        ++texts;
    }
    QVERIFY(texts >= 2);
}

void TestWindows::togglesInEveryLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("english") << "en-GB";
    QTest::newRow("chinese") << "zh-CN";
}

void TestWindows::togglesInEveryLanguage()
{
    QFETCH(QString, language);
    useLanguage({language});
    WindowRig rig;
    const auto inIt = [](const char *text) { return MainWindow::tr(text); };
    rig.click("closeBtnClickAct");
    QCOMPARE(rig.lines("infoText"), QStringList());
    QCOMPARE(rig.caption("openBtnClickAct"), inIt("Connect"));

    rig.connectToPeer();
    QCOMPARE(rig.caption("openBtnClickAct"), inIt("Refresh Connect"));
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");
    QCOMPARE(rig.caption("openWatchBtnClickAct"), inIt("Stop Listening"));
    rig.click("openWatchBtnClickAct");
    QCOMPARE(rig.caption("openWatchBtnClickAct"), inIt("Start Listening"));

    rig.servePictures();
    for (const auto &[button, idle] : {std::pair("showRgbBtnClickAct", "Palmprint Preview"),
                                       std::pair("showIrBtnClickAct", "Palm Vein Preview"),
                                       std::pair("showMixBtnClickAct", "Joint Preview")}) {
        QCOMPARE(rig.caption(button), inIt(idle));
        rig.click(button);
        QCOMPARE(rig.caption(button), inIt("Stop Collecting"));
        rig.click(button);
        QCOMPARE(rig.caption(button), inIt(idle));
    }

    // A refused enrollment leaves its caption; the next click only restores the preview's caption.
    rig.peer.expect({hex("EAC5 000006 04 01 00000001"), {hex("EAC5 000001 02")}});
    rig.click("enrollBtnClickAct");
    QCOMPARE(rig.caption("showIrBtnClickAct"), inIt("palm vein preview"));
    rig.click("showIrBtnClickAct");
    QCOMPARE(rig.caption("showIrBtnClickAct"), inIt("Palm Vein Preview"));

    rig.click("closeBtnClickAct");
    QCOMPARE(rig.caption("openBtnClickAct"), QString("Connect")); // not translated
    const QStringList lines = rig.lines("infoText");
    rig.click("closeBtnClickAct");
    QCOMPARE(rig.lines("infoText"), lines);
}

void TestWindows::usesTheFirstKnownLanguage_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::addColumn<bool>("chinese");
    QTest::newRow("none") << QStringList() << false;
    QTest::newRow("english-first") << QStringList{"en-US", "zh-CN"} << false;
    QTest::newRow("unknown-first") << QStringList{"fr-FR", "zh-CN", "en-US"} << true;
    QTest::newRow("script") << QStringList{"zh-Hans-CN"} << true;
    QTest::newRow("singapore") << QStringList{"zh-SG"} << true;
    QTest::newRow("traditional") << QStringList{"zh-TW"} << false;
}

void TestWindows::usesTheFirstKnownLanguage()
{
    QFETCH(QStringList, languages);
    QFETCH(bool, chinese);
    useLanguage(languages);
    QCOMPARE(MainWindow::tr("Disconnect") != "Disconnect", chinese);
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel") != "Cancel", chinese);
}

void TestWindows::writesWesternDigits()
{
    QLocale::setDefault(QLocale("ar-EG"));
    useLanguage({"ar-EG"});
    WindowRig rig;
    rig.connectToPeer(); // logs the port, in digits
}

QTEST_MAIN(TestWindows)
#include "tst_windows.moc"
