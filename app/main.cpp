#include "app/appearance.h"
#include "app/language.h"
#include "app/mainwindow.h"
#include "version.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

namespace {

void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
        QCoreApplication::translate("main", "Console for a palm-recognition access terminal"));
    parser->setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // like -platform
    parser->addHelpOption();
    parser->addVersionOption();
}

/// Ends the program if the arguments ask for the help or the version. Ignores unknown options,
/// since Qt's own options have not been removed from the arguments yet.
void answerWithoutDisplay(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    useLanguage();
    QCommandLineParser parser;
    addOptions(&parser);
    parser.parse(QCoreApplication::arguments());
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all")))
        parser.showHelp();
}

/// Message handler for the time in which Qt opens the display. Without a display Qt itself would
/// abort and leave a core file.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    const bool fatal = type == QtFatalMsg;
    std::fprintf(stderr, "%s\n", fatal ? "No display can be opened." : qPrintable(text));
    if (fatal)
        std::_Exit(1);
}

int runConsole(int &argc, char *argv[])
{
    prepareScaling();
    qInstallMessageHandler(endWithoutDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(nullptr);
    prepareAppearance();
    useLanguage();
    QCommandLineParser parser;
    addOptions(&parser);
    parser.process(application);

    MainWindow window;
    window.show();
    const int result = QApplication::exec();
    // Qt would wait for a host name that is still being looked up, without any window.
    QObject::disconnect(&application, SIGNAL(destroyed(QObject *)), nullptr, nullptr);
    return result;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setOrganizationDomain(QStringLiteral("kovant.example"));
    QCoreApplication::setOrganizationName(QStringLiteral("Kovant"));
    QCoreApplication::setApplicationName(QStringLiteral("Quirel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIREL_APPLICATION_VERSION));

    if (argc > 1)
        answerWithoutDisplay(argc, argv);
    std::_Exit(runConsole(argc, argv)); // Qt's thread of the lookup would be waited for here, too
}
