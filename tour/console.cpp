#include "tour/console.h"

#include "app/imglabel.h"
#include "config/usercfgdlg.h"
#include "link/cmdclient.h"
#include "tour/dialogperson.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTextEdit>
#include <QtTest>

Console::Console()
{
    window.show();
}

template <class Widget> Widget *Console::find(const char *name) const
{
    auto *widget = window.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("The window has no %s", name);
    return widget;
}

void Console::click(const char *button)
{
    QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
}

void Console::click(const char *button, const std::vector<Answer> &answers)
{
    DialogPerson person(answers, picturePath);
    click(button);
    if (!person.isDone())
        qWarning("%s opened fewer dialogs than expected", button);
}

void Console::openUserConfig(const std::vector<Answer> &answers)
{
    DialogPerson person(answers, picturePath);
    UserCfgDlg dialog(window.findChild<CmdClient *>(), find<QTextEdit>("infoText"), &window);
    dialog.exec();
}

void Console::type(const char *field, const QString &text)
{
    auto *widget = find<QWidget>(field);
    widget->setFocus();
    QTest::keySequence(widget, QKeySequence::SelectAll);
    QTest::keyClicks(widget, text);
}

void Console::pointAt(const char *picture, QPoint position)
{
    auto *label = find<ImgLabel>(picture);
    QTest::mouseMove(label, {0, 0}); // a pointer that rests where it was tells nothing
    QTest::mouseMove(label, position);
}

bool Console::isUsable(const char *control) const
{
    return find<QWidget>(control)->isEnabled();
}

QString Console::caption(const char *button) const
{
    return sourceTexts.sourcesOf(find<QPushButton>(button)->text()).first();
}

QString Console::labelText(const char *label) const
{
    return sourceTexts.sourcesOf(find<QLabel>(label)->text()).first();
}

QImage Console::picture(const char *name) const
{
    return find<ImgLabel>(name)->grab().toImage();
}

QStringList Console::lines(const char *log, int from) const
{
    QStringList lines;
    for (const QString &line :
         find<QTextEdit>(log)->toPlainText().split(QLatin1Char('\n')).mid(from))
        lines.append(sourceTexts.sourcesOf(line));
    return lines;
}

QStringList Console::infoLines() const
{
    return lines("infoText");
}

QStringList Console::watchLines() const
{
    return lines("watchText");
}

QStringList Console::newInfoLines() const
{
    return lines("infoText", linesBefore);
}

QString Console::logs() const
{
    return QStringLiteral("== Information\n%1\n== Messages\n%2\n")
        .arg(find<QTextEdit>("infoText")->toPlainText(),
             find<QTextEdit>("watchText")->toPlainText());
}

void Console::beginStep(const QString &path)
{
    picturePath = path;
    const QTextDocument *log = find<QTextEdit>("infoText")->document();
    linesBefore = log->isEmpty() ? 0 : log->blockCount();
}

bool Console::savePicture()
{
    return picturePath.isEmpty() || window.grab().save(picturePath + QStringLiteral(".png"));
}
