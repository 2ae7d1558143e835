/// Drives the real window through a whole session with a simulated terminal, off-screen unless a
/// platform is chosen. Leaves a picture of each step and the logs; fails if a step does.
/// As `tour --probe` it only finds out whether there is a display, and fails if there is none.

#include "app/appearance.h"
#include "app/language.h"
#include "data/wholefile.h"
#include "tour/session.h"
#include "tour/simulatorprocess.h"
#include "tour/steps.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

#include <cstdlib>

namespace {

constexpr int StepTimeout = 10000; // ms

/// In place of Qt's way to end, which leaves a core file.
void endOnFatal(QtMsgType type, const QMessageLogContext & /*context*/, const QString & /*text*/)
{
    if (type == QtFatalMsg)
        std::_Exit(1);
}

/// Pictures of an earlier tour may be of steps that are gone, and a file dialog would ask whether
/// to replace what was saved then.
void removeLeftovers(const QDir &output)
{
    const QStringList files = output.entryList(
        {QStringLiteral("[0-9][0-9]-*.png"), QStringLiteral("ir_*.png"),
         QStringLiteral("tour-*.bin"), QStringLiteral("tour-*.cfg"), QStringLiteral("tour-*.txt")},
        QDir::Files);
    for (const QString &file : files)
        QFile::remove(output.filePath(file));
}

int takeTour(const QDir &output, const QString &language)
{
    const QStringList picturesBefore = savedPictures();
    removeLeftovers(output);
    const TourPorts ports{0, freePort(), freePort()};
    SimulatorProcess simulator;
    if (!simulator.start(ports.messages))
        return 1;

    Console console;
    if (!language.isEmpty() && !console.setLanguage(language)) {
        QTextStream(stderr) << "There are no texts in " << language << '\n';
        return 1;
    }
    int failed = 0;
    int number = 0;
    for (const Step &step : tourSteps({simulator.port(), ports.unused, ports.messages}, output)) {
        const QString picture =
            QStringLiteral("%1-%2").arg(++number, 2, 10, QLatin1Char('0')).arg(step.name);
        const bool done = perform(step, &console, output.filePath(picture), StepTimeout);
        QTextStream(stdout) << (done ? "ok      " : "FAILED  ") << step.name << '\n';
        failed += done ? 0 : 1;
    }
    if (!takeSavedPictures(picturesBefore, output))
        ++failed;
    if (!writeWholeFile(output.filePath(QStringLiteral("session.log")), console.logs().toUtf8()))
        ++failed;
    if (!simulator.end())
        ++failed;
    QTextStream(stdout) << number << " steps, " << failed << " failed; pictures and log in "
                        << output.path() << '\n';
    return failed == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && qstrcmp(argv[1], "--probe") == 0) {
        qInstallMessageHandler(endOnFatal);
        const QApplication application(argc, argv);
        return 0;
    }
    stayOffScreen();
    prepareScaling();
    QApplication application(argc, argv);
    prepareAppearance();

    const QCommandLineOption outputOption(QStringLiteral("output"),
                                          QStringLiteral("Folder for pictures and log."),
                                          QStringLiteral("folder"), QStringLiteral("build/tour"));
    const QCommandLineOption languageOption(
        QStringLiteral("language"), QStringLiteral("Of the console, as zh_CN; English without."),
        QStringLiteral("language"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({outputOption, languageOption});
    parser.process(application);
    const QString language = parser.value(languageOption);
    if (!language.isEmpty())
        useLanguage({language});

    const QDir output(parser.value(outputOption));
    if (!output.mkpath(QStringLiteral("."))) {
        QTextStream(stderr) << "Cannot make the folder " << output.path() << '\n';
        return 1;
    }
    return takeTour(output, language);
}
