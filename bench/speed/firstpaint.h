#pragma once

#include <QApplication>
#include <QEvent>
#include <QMainWindow>

#include <cstdio>

/// Prints "painted" when the window has been painted for the first time, and ends the program.
class FirstPaint : public QObject
{
public:
    static int showUntilPainted(QMainWindow *window)
    {
        FirstPaint paint;
        window->installEventFilter(&paint);
        window->show();
        return QApplication::exec();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) // children are painted within the same event
            QMetaObject::invokeMethod(qApp, printAndQuit, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

private:
    static void printAndQuit()
    {
        std::puts("painted");
        std::fflush(stdout);
        QCoreApplication::quit();
    }
};
