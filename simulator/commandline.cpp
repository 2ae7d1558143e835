#include "simulator/commandline.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <iterator>
#include <limits>

namespace sim {
namespace {

struct NumberOption
{
    const char *name;
    const char *valueName;
    const char *description;
    const char *value; ///< unless another is given
    quint32 lowest;
    quint32 highest;
};

enum Number { Port, PushPort, PushInterval, Seed };

constexpr NumberOption Numbers[] = {
    {"port", "port", "Listen on this port; 0 picks a free one.", "20086", 0, 65535},
    {"push-port", "port", "Push messages to this port instead of the announced one; 0 keeps that.",
     "0", 0, 65535},
    {"push-interval", "seconds", "Time between two pushed messages.", "5", 1, 3600},
    {"seed", "number", "Start of everything random.", "1", 0, std::numeric_limits<quint32>::max()},
};

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("A simulated palm-recognition terminal."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("address"), QStringLiteral("Listen on this address."),
                      QStringLiteral("address"), QStringLiteral("127.0.0.1")});
    for (const NumberOption &number : Numbers)
        parser.addOption({QString::fromLatin1(number.name), QString::fromLatin1(number.description),
                          QString::fromLatin1(number.valueName),
                          QString::fromLatin1(number.value)});
    parser.addOption({QStringLiteral("verbose"), QStringLiteral("Tell each command on stderr.")});
}

QString complaint(const char *option, const QString &value)
{
    return QStringLiteral("Bad value for --%1: %2").arg(QString::fromLatin1(option), value);
}

bool readNumbers(const QCommandLineParser &parser, quint32 (&values)[std::size(Numbers)],
                 QString *error)
{
    for (size_t i = 0; i < std::size(Numbers); ++i) {
        const NumberOption &number = Numbers[i];
        const QString text = parser.value(QString::fromLatin1(number.name));
        bool readable = false;
        values[i] = text.toUInt(&readable);
        if (!readable || values[i] < number.lowest || values[i] > number.highest) {
            *error = complaint(number.name, text);
            return false;
        }
    }
    return true;
}

bool readAddress(const QCommandLineParser &parser, QHostAddress *address, QString *error)
{
    const QString text = parser.value(QStringLiteral("address"));
    if (address->setAddress(text))
        return true;
    *error = complaint("address", text);
    return false;
}

} // namespace

bool readArguments(const QCoreApplication &app, Settings *settings, QString *error)
{
    QCommandLineParser parser;
    describe(parser);
    parser.process(app);
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("Unexpected argument: ") + parser.positionalArguments().first();
        return false;
    }
    quint32 numbers[std::size(Numbers)] = {};
    if (!readAddress(parser, &settings->address, error) || !readNumbers(parser, numbers, error))
        return false;
    settings->port = static_cast<quint16>(numbers[Port]);
    settings->verbose = parser.isSet(QStringLiteral("verbose"));
    settings->terminal.pushPort = static_cast<quint16>(numbers[PushPort]);
    settings->terminal.pushIntervalMs = static_cast<int>(numbers[PushInterval]) * 1000;
    settings->terminal.seed = numbers[Seed];
    return true;
}

} // namespace sim
