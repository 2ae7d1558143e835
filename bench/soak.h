#pragma once

#include "bench/framecounter.h"
#include "bench/linewatch.h"
#include "bench/measure.h"
#include "bench/watchdog.h"
#include "testkit/console.h"

#include <QElapsedTimer>

struct Step;

/// Takes one window through round after round, each with a new simulated terminal.
class Soak
{
public:
    /// Runs for at least this time and MinRounds rounds. Returns false, with the reason printed, if
    /// something fails.
    bool run(qint64 milliseconds);

private:
    bool round();
    bool step(const Step &step, const QString &folder);
    bool fail(const QString &reason);
    /// Clears the log, deletes what is pending, and measures what remains.
    void measure();
    bool judge() const;
    QString position() const;

    Console console;
    FrameCounter frames; ///< constructed after the console, whose pictures it counts
    LineWatch lines;
    Watchdog watchdog;
    QElapsedTimer clock;
    std::vector<Sample> samples;
    QMap<QByteArray, int> classesBefore; ///< after the minimum warm-up
    int steps = 0;
    QString current;
};
