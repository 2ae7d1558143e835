#include "testkit/console.h"

#include "app/imglabel.h"
#include "config/usercfgdlg.h"
#include "link/cmdclient.h"

#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

void Console::click(const QByteArray &button, const std::vector<Answer> &answers) const
{
    const ModalDriver driver(answers, picturePath);
    click(button);
}

void Console::openUserConfig(const std::vector<Answer> &answers)
{
    const ModalDriver driver(answers, picturePath);
    UserCfgDlg dialog(window.findChild<CmdClient *>(), find<QTextEdit>("infoText"), &window);
    dialog.exec();
}

void Console::type(const QByteArray &field, const QString &text) const
{
    drive::type(&window, field, text);
}

void Console::pointAt(const QByteArray &picture, QPoint position) const
{
    auto *label = find<ImgLabel>(picture);
    QTest::mouseMove(label, {0, 0}); // Qt sends no event to a pointer that does not move
    QTest::mouseMove(label, position);
}

QString Console::caption(const QByteArray &button) const
{
    return sourcesOf(find<QPushButton>(button)->text()).first();
}

QString Console::labelText(const QByteArray &label) const
{
    return sourcesOf(find<QLabel>(label)->text()).first();
}

QImage Console::picture(const QByteArray &label) const
{
    return find<ImgLabel>(label)->grab().toImage();
}

QStringList Console::lines(const QByteArray &log, int from) const
{
    QStringList lines;
    for (const QString &line : drive::lines(find<QTextEdit>(log)).mid(from))
        lines.append(sourcesOf(line));
    return lines;
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
    linesBefore = drive::lines(find<QTextEdit>("infoText")).size();
}

bool Console::savePicture()
{
    return picturePath.isEmpty() || window.grab().save(picturePath + QStringLiteral(".png"));
}

QStringList Console::sourcesOf(const QString &shown) const
{
    return sourceTexts ? sourceTexts(shown) : QStringList(shown);
}
