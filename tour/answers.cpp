#include "tour/answers.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

namespace {

constexpr int Patience = 8000; // ms

template <class Widget> Widget *find(QWidget *dialog, const char *name)
{
    auto *widget = dialog->findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("%s has no %s", dialog->metaObject()->className(), name);
    return widget;
}

} // namespace

Answer answers::number(int value)
{
    return [value](QWidget *dialog) {
        auto *input = qobject_cast<QInputDialog *>(dialog);
        if (input) {
            input->setIntValue(value);
            input->accept();
        }
    };
}

Answer answers::text(const QString &text)
{
    return [text](QWidget *dialog) {
        auto *input = qobject_cast<QInputDialog *>(dialog);
        if (input) {
            input->setTextValue(text);
            input->accept();
        }
    };
}

Answer answers::yes()
{
    return [](QWidget *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        if (box)
            box->button(QMessageBox::Yes)->click();
    };
}

Answer answers::cancel()
{
    return [](QWidget *dialog) { dialog->close(); };
}

Answer answers::file(const QString &path)
{
    return [path](QWidget *dialog) {
        find<QLineEdit>(dialog, "fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

void answers::type(QWidget *dialog, const char *field, const QString &text)
{
    auto *widget = find<QWidget>(dialog, field);
    widget->setFocus();
    QTest::keySequence(widget, QKeySequence::SelectAll);
    QTest::keyClicks(widget, text);
}

void answers::click(QWidget *dialog, const char *button)
{
    QTest::mouseClick(find<QPushButton>(dialog, button), Qt::LeftButton);
}

void answers::clickExport(QWidget *dialog, const char *button, const QString &fileName,
                          const QString &target)
{
    const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(fileName);
    const QString aside = target + QStringLiteral(".aside");
    const bool hadOne = QFile::rename(path, aside);
    click(dialog, button);
    if (!QFile::rename(path, target))
        qWarning("%s wrote no %s", button, qPrintable(fileName));
    if (hadOne)
        QFile::rename(aside, path);
}

void answers::waitFor(const std::function<bool()> &condition)
{
    if (!QTest::qWaitFor(condition, Patience))
        qWarning("A dialog waited in vain");
}
