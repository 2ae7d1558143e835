#pragma once

#include <QApplication>
#include <QEvent>
#include <QMainWindow>

#include <cstdio>

/// Says so once the window is painted for the first time, and ends the program.
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
        if (event->type() == QEvent::Paint) // its children follow within the same event
            QMetaObject::invokeMethod(qApp, tellAndQuit, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

private:
    static void tellAndQuit()
    {
        std::puts("painted");
        std::fflush(stdout);
        QCoreApplication::quit();
    }
};
