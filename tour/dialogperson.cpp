#include "tour/dialogperson.h"

#include <QApplication>
#include <QWidget>

namespace {

constexpr int LookInterval = 20; // ms

} // namespace

DialogPerson::DialogPerson(const std::vector<Answer> &givenAnswers, const QString &path)
    : answers(givenAnswers),
      picturePath(path)
{
    connect(&timer, SIGNAL(timeout()), this, SLOT(look()));
    timer.start(LookInterval);
}

/// The picture shows a dialog as it is left.
bool DialogPerson::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::Hide && dialog && !picturePath.isEmpty())
        dialog->grab().save(QStringLiteral("%1-%2.png").arg(picturePath).arg(++pictures));
    return QObject::eventFilter(watched, event);
}

void DialogPerson::look()
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog || atWork.contains(dialog))
        return;
    if (dialog == lastAnswered || isDone()) { // left open by its answer, or nobody knows one
        qWarning("%s had to be closed", dialog->metaObject()->className());
        dialog->close();
        return;
    }
    dialog->installEventFilter(this);
    atWork.append(dialog);
    // Not from within the timer's own slot, which would keep it from seeing the next dialog.
    QMetaObject::invokeMethod(this, "answer", Qt::QueuedConnection);
}

void DialogPerson::answer()
{
    QWidget *dialog = atWork.last();
    const Answer act = answers[done++];
    act(dialog);
    atWork.removeOne(dialog);
    lastAnswered = dialog;
}
