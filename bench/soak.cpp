#include "bench/soak.h"

#include "bench/census.h"
#include "bench/soaksteps.h"
#include "testkit/simulatorprocess.h"

#include <QCoreApplication>
#include <QPixmapCache>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTime>
#include <QtTest>

namespace {

constexpr int StepTimeout = 60000; // ms: the machine may be busy
constexpr int SettleTime = 5000;   // ms
constexpr int LinesToPrint = 20;

void print(const QString &text)
{
    QTextStream(stdout) << text << '\n';
}

void printChanges(const QMap<QByteArray, int> &before, const QMap<QByteArray, int> &after)
{
    const QSet<QByteArray> names = QSet<QByteArray>(before.keyBegin(), before.keyEnd())
                                       .unite(QSet<QByteArray>(after.keyBegin(), after.keyEnd()));
    for (const QByteArray &name : names) {
        if (before.value(name) != after.value(name))
            print(QStringLiteral("  %1: %2, then %3")
                      .arg(QString::fromLatin1(name), QString::number(before.value(name)),
                           QString::number(after.value(name))));
    }
}

} // namespace

bool Soak::run(qint64 milliseconds)
{
    // Each file dialog adds icons to Qt's cache, which would grow by megabytes.
    QPixmapCache::setCacheLimit(0);
    print(QStringLiteral("    time rounds  steps  frames") + headline());
    console.window.show();
    clock.start();
    bool done = true;
    while (done && (clock.elapsed() < milliseconds || samples.size() < MinRounds))
        done = round();
    return done && judge();
}

bool Soak::round()
{
    const QStringList picturesBefore = savedPictures();
    const QTemporaryDir folder;
    const QDir files(folder.path());
    {
        SimulatorProcess simulator;
        if (!folder.isValid() || !simulator.start())
            return fail(QStringLiteral("the round cannot begin"));
        for (const Step &next : soakSteps(simulator, files, &frames)) {
            if (!step(next, files.path()))
                return false;
        }
    }
    if (!takeSavedPictures(picturesBefore, files))
        return fail(QStringLiteral("no picture was saved"));
    measure();
    return true;
}

bool Soak::step(const Step &step, const QString &folder)
{
    current = step.name;
    watchdog.begin(position());
    if (!perform(step, &console, QString(), StepTimeout))
        return fail(QStringLiteral("no success"));
    ++steps;
    const QString complaint = lines.complaint(step.name, console.newInfoLines(), folder);
    if (!complaint.isEmpty())
        return fail(complaint);
    const QString unexpected = unexpectedMessage(console.watchLines());
    if (!unexpected.isEmpty())
        return fail(QStringLiteral("an unexpected message: ") + unexpected);
    const QStringList warnings = takeWarnings();
    return warnings.isEmpty() || fail(QStringLiteral("a warning: ") + warnings.first());
}

bool Soak::fail(const QString &reason)
{
    const QStringList log = console.infoLines();
    print(QStringLiteral("FAILED: %1: %2\nFrames since the last long preview began: %3\n"
                         "The last lines of the log:\n  %4")
              .arg(position(), reason, QString::number(frames.sinceMark()),
                   log.mid(qMax(0, log.size() - LinesToPrint)).join(QStringLiteral("\n  "))));
    return false;
}

QString Soak::position() const
{
    return QStringLiteral("round %1, step %2").arg(samples.size() + 1).arg(current);
}

void Soak::measure()
{
    console.click("clearInfoTextBtnClickAct"); // the button of the other log needs a connection
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // Objects may be deleted a little later.
    const bool settled =
        samples.empty() ||
        QTest::qWaitFor([this] { return hasSettled(takeSample(), samples.back()); }, SettleTime);
    samples.push_back(takeSample());
    if (static_cast<int>(samples.size()) == warmUp(MinRounds))
        classesBefore = census::byClass();
    print(QStringLiteral("%1 %2 %3 %4")
              .arg(QTime::fromMSecsSinceStartOfDay(static_cast<int>(clock.elapsed())).toString(),
                   QString::number(samples.size()).rightJustified(6),
                   QString::number(steps).rightJustified(6),
                   QString::number(frames.total()).rightJustified(7)) +
          columns(samples.back()) + QLatin1String(settled ? "" : " changed"));
}

bool Soak::judge() const
{
    const QStringList missing = unmeasured(samples.back());
    if (!missing.isEmpty())
        print(QStringLiteral("Cannot be measured on this system: ") +
              missing.join(QStringLiteral(", ")));
    const QStringList found = growth(samples);
    for (const QString &fault : found)
        print(QStringLiteral("FAILED: ") + fault);
    if (!found.isEmpty())
        printChanges(classesBefore, census::byClass());
    print(QStringLiteral("%1 rounds, %2 steps, %3 frames shown, warm-up of %4 rounds; %5")
              .arg(QString::number(samples.size()), QString::number(steps),
                   QString::number(frames.total()),
                   QString::number(warmUp(static_cast<int>(samples.size()))),
                   found.isEmpty() ? QStringLiteral("nothing grew") : QStringLiteral("failed")));
    return found.isEmpty();
}
