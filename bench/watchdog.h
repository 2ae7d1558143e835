#pragma once

#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <atomic>

/// Ends the program with an error when one piece of work takes minutes, and prints its name.
class Watchdog : public QThread
{
    Q_OBJECT

public:
    Watchdog() { start(); }
    ~Watchdog() override;

    void begin(const QString &work);

protected:
    void run() override;

private:
    QSemaphore begun;
    QMutex mutex;
    QString current;
    std::atomic<bool> over{false};
};
