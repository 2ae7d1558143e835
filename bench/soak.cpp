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

constexpr int StepTimeout = 60000; // ms: a machine may be very busy
constexpr int SettleTime = 5000;   // ms
constexpr int LinesToTell = 20;

void tell(const QString &text)
{
    QTextStream(stdout) << text << '\n';
}

void tellChanges(const QMap<QByteArray, int> &before, const QMap<QByteArray, int> &after)
{
    const QSet<QByteArray> names = QSet<QByteArray>(before.keyBegin(), before.keyEnd())
                                       .unite(QSet<QByteArray>(after.keyBegin(), after.keyEnd()));
    for (const QByteArray &name : names) {
        if (before.value(name) != after.value(name))
            tell(QStringLiteral("  %1: %2, then %3")
                     .arg(QString::fromLatin1(name), QString::number(before.value(name)),
                          QString::number(after.value(name))));
    }
}

} // namespace

bool Soak::run(qint64 milliseconds)
{
    // Each file dialog brings new icons to Qt's cache, which takes megabytes before it is full.
    QPixmapCache::setCacheLimit(0);
    tell(QStringLiteral("    time rounds  steps  frames") + headline());
    console.window.show();
    clock.start();
    bool done = true;
    while (done && (clock.elapsed() < milliseconds || samples.size() < FewestRounds))
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
    watchdog.beginsWith(position());
    if (!perform(step, &console, QString(), StepTimeout))
        return fail(QStringLiteral("no success"));
    ++steps;
    const QString complaint = lines.complaint(step.name, console.newInfoLines(), folder);
    if (!complaint.isEmpty())
        return fail(complaint);
    const QString strange = strangeMessage(console.watchLines());
    if (!strange.isEmpty())
        return fail(QStringLiteral("a strange message: ") + strange);
    const QStringList warnings = takeWarnings();
    return warnings.isEmpty() || fail(QStringLiteral("a warning: ") + warnings.first());
}

bool Soak::fail(const QString &reason)
{
    const QStringList log = console.infoLines();
    tell(QStringLiteral("FAILED: %1: %2\nFrames since the last long preview began: %3\n"
                        "The last lines of the log:\n  %4")
             .arg(position(), reason, QString::number(frames.sinceMark()),
                  log.mid(qMax(0, log.size() - LinesToTell)).join(QStringLiteral("\n  "))));
    return false;
}

QString Soak::position() const
{
    return QStringLiteral("round %1, step %2").arg(samples.size() + 1).arg(current);
}

void Soak::measure()
{
    console.click("clearInfoTextBtnClickAct"); // that of the messages needs a connection
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // Whatever takes its leave later has time to.
    const bool settled =
        samples.empty() ||
        QTest::qWaitFor([this] { return hasSettled(takeSample(), samples.back()); }, SettleTime);
    samples.push_back(takeSample());
    if (static_cast<int>(samples.size()) == warmUp(FewestRounds))
        classesBefore = census::byClass();
    tell(QStringLiteral("%1 %2 %3 %4")
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
        tell(QStringLiteral("Cannot be measured on this system: ") +
             missing.join(QStringLiteral(", ")));
    const QStringList found = growth(samples);
    for (const QString &fault : found)
        tell(QStringLiteral("FAILED: ") + fault);
    if (!found.isEmpty())
        tellChanges(classesBefore, census::byClass());
    tell(QStringLiteral("%1 rounds, %2 steps, %3 frames shown, warm-up of %4 rounds; %5")
             .arg(QString::number(samples.size()), QString::number(steps),
                  QString::number(frames.total()),
                  QString::number(warmUp(static_cast<int>(samples.size()))),
                  found.isEmpty() ? QStringLiteral("nothing grew") : QStringLiteral("failed")));
    return found.isEmpty();
}
