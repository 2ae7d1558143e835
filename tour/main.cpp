/// Drives the real window through a whole session with a simulated terminal, off-screen unless
/// QT_QPA_PLATFORM names a platform. Saves a picture of each step and the logs; fails if a step
/// fails. `tour --probe` only checks for a display, and fails if there is none.

#include "app/appearance.h"
#include "app/language.h"
#include "data/wholefile.h"
#include "testkit/drive.h"
#include "testkit/simulatorprocess.h"
#include "testkit/steps.h"
#include "tour/sourcetexts.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

#include <cstdlib>

namespace {

constexpr int StepTimeout = 10000; // ms

/// Ends the program without the core file that Qt's own handler would leave.
void endOnFatal(QtMsgType type, const QMessageLogContext & /*context*/, const QString & /*text*/)
{
    if (type == QtFatalMsg)
        std::_Exit(1);
}

/// Removes the files of an earlier tour: pictures of steps that no longer exist, and files that
/// would make a file dialog ask whether to replace them.
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
    SimulatorProcess simulator;
    if (!simulator.start())
        return 1;

    SourceTexts texts;
    if (!language.isEmpty() && !texts.load(language)) {
        QTextStream(stderr) << "There are no texts in " << language << '\n';
        return 1;
    }
    Console console;
    console.setSourceTexts([&texts](const QString &shown) { return texts.sourcesOf(shown); });
    console.window.show();
    int failed = 0;
    int number = 0;
    for (const Step &step : sessionSteps(simulator, output)) {
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
    drive::stayOffScreen();
    prepareScaling();
    QApplication application(argc, argv);
    prepareAppearance();

    const QCommandLineOption outputOption(QStringLiteral("output"),
                                          QStringLiteral("Folder for pictures and log."),
                                          QStringLiteral("folder"), QStringLiteral("build/tour"));
    const QCommandLineOption languageOption(
        QStringLiteral("language"),
        QStringLiteral("Language of the console, such as zh_CN (default: English)."),
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
