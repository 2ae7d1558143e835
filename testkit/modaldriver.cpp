#include "testkit/modaldriver.h"

#include "testkit/drive.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace {

constexpr int LookInterval = 20; // ms: a dialog is painted and active before it is operated

/// Fails the test, or warns, if the dialog is of another class.
template <class Dialog> Dialog *cast(QWidget *dialog)
{
    auto *found = qobject_cast<Dialog *>(dialog);
    if (!found)
        drive::fail(QStringLiteral("%1 is no %2")
                        .arg(QLatin1String(dialog->metaObject()->className()),
                             QLatin1String(Dialog::staticMetaObject.className())));
    return found;
}

} // namespace

Answer answer::number(int value)
{
    return [value](QWidget *dialog) {
        if (auto *input = cast<QInputDialog>(dialog)) {
            input->setIntValue(value);
            input->accept();
        }
    };
}

Answer answer::text(const QString &text)
{
    return [text](QWidget *dialog) {
        if (auto *input = cast<QInputDialog>(dialog)) {
            input->setTextValue(text);
            input->accept();
        }
    };
}

Answer answer::file(const QString &path)
{
    return [path](QWidget *dialog) {
        drive::find<QLineEdit>(dialog, "fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

Answer answer::yes()
{
    return [](QWidget *dialog) {
        if (auto *box = cast<QMessageBox>(dialog))
            box->button(QMessageBox::Yes)->click();
    };
}

Answer answer::click(const QString &caption)
{
    return [caption](QWidget *dialog) { drive::clickCaption(dialog, caption); };
}

Answer answer::close()
{
    return [](QWidget *dialog) { dialog->close(); };
}

ModalDriver::ModalDriver(const Answer &answer)
    : ModalDriver(std::vector<Answer>{answer})
{
}

ModalDriver::ModalDriver(const std::vector<Answer> &given, const QString &path)
    : answers(given),
      picturePath(path)
{
    QTimer::singleShot(LookInterval, this, SLOT(look()));
}

ModalDriver::~ModalDriver()
{
    if (done < answers.size())
        drive::fail(QStringLiteral("A modal dialog has not opened."));
}

bool ModalDriver::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::Hide && dialog && !picturePath.isEmpty())
        dialog->grab().save(QStringLiteral("%1-%2.png").arg(picturePath).arg(++pictures));
    return QObject::eventFilter(watched, event);
}

void ModalDriver::look()
{
    // Started before the answer, which may itself open a dialog and wait for it.
    QTimer::singleShot(LookInterval, this, SLOT(look()));
    QWidget *dialog = QApplication::activeModalWidget();
    if (dialog && !served.contains(dialog))
        serve(dialog);
}

void ModalDriver::serve(QWidget *dialog)
{
    const QPointer<QWidget> open(dialog);
    const bool isExpected = done < answers.size();
    if (isExpected) {
        dialog->installEventFilter(this);
        served.append(dialog);
        const Answer answer = answers[done++]; // a copy: then() may move the others
        answer(dialog);
        served.removeOne(dialog);
    }
    if (open && open->isVisible()) {
        drive::fail(QStringLiteral("%1 %2").arg(
            QLatin1String(open->metaObject()->className()),
            QLatin1String(isExpected ? "was left open" : "opened unexpectedly")));
        open->close();
    }
}
