#pragma once

#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <atomic>

/// Ends the program, telling what was done last, when that takes minutes: something hangs.
class Watchdog : public QThread
{
    Q_OBJECT

public:
    Watchdog() { start(); }
    ~Watchdog() override;

    void beginsWith(const QString &work);

protected:
    void run() override;

private:
    QSemaphore begun;
    QMutex mutex;
    QString current;
    std::atomic<bool> over{false};
};
