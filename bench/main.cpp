/// Operates one window for a long time, off-screen unless QT_QPA_PLATFORM names a platform, and
/// fails if anything grows, fails or hangs.

#include "bench/census.h"
#include "bench/soak.h"
#include "testkit/drive.h"

#include "app/appearance.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

constexpr double MsPerMinute = 60000;

} // namespace

int main(int argc, char *argv[])
{
    census::begin();
    drive::stayOffScreen();
    keepWarnings();
    QApplication application(argc, argv);
    prepareAppearance();

    const QCommandLineOption minutesOption(
        QStringLiteral("minutes"), QStringLiteral("Duration; fractions are allowed (default: 30)."),
        QStringLiteral("number"), QStringLiteral("30"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(minutesOption);
    parser.process(application);
    bool isNumber = false;
    const double minutes = parser.value(minutesOption).toDouble(&isNumber);
    if (!isNumber || minutes < 0 || minutes > 24 * 60) {
        QTextStream(stderr) << "Bad value for --minutes: " << parser.value(minutesOption) << '\n';
        return 1;
    }

    // Keeps the folders that file dialogs remember out of the user's settings.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    return Soak().run(static_cast<qint64>(minutes * MsPerMinute)) ? 0 : 1;
}
