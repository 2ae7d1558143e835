#pragma once

#include "tour/console.h"

#include <QList>
#include <QPointer>
#include <QTimer>

/// Sits before the screen while a button's click runs, and answers the dialogs that it opens.
class DialogPerson : public QObject
{
    Q_OBJECT

public:
    DialogPerson(const std::vector<Answer> &answers, const QString &picturePath);

    bool isDone() const { return done == answers.size(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void look();
    void answer();

private:
    std::vector<Answer> answers;
    QString picturePath;
    QTimer timer;
    QList<QWidget *> atWork; ///< dialogs whose answers run now, the innermost last
    /// Null once it is gone: the next dialog may stand where it stood in memory.
    QPointer<QWidget> lastAnswered;
    size_t done = 0;
    int pictures = 0;
};
