#include "simulator/commandline.h"

#include "simulator/faults/faultspec.h"

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

enum Number {
    Port,
    PushPort,
    PushInterval,
    Seed,
    Rate,
    Delay,
    MaxUsers,
    EnrollSeconds,
    RebootSeconds,
    Records
};

constexpr NumberOption Numbers[] = {
    {"port", "port", "Listen on this port; 0 picks a free one.", "20086", 0, 65535},
    {"push-port", "port", "Push messages to this port instead of the announced one; 0 keeps that.",
     "0", 0, 65535},
    {"push-interval", "seconds", "Time between two pushed messages.", "5", 1, 3600},
    {"seed", "number", "Start of everything random.", "1", 0, std::numeric_limits<quint32>::max()},
    {"rate", "bytes", "Send at most so many bytes a second to each console; 0 sets no limit.", "0",
     0, 1'000'000'000},
    {"delay", "ms", "Added to the round trip of every command.", "0", 0, Fault::MostMs},
    {"max-users", "number", "Users that the database holds.", "3000", 1, 10000},
    {"enroll-seconds", "seconds", "Time that an enrollment takes.", "3", 0, 60},
    {"reboot-seconds", "seconds", "Time that a reboot takes.", "10", 0, 60},
    {"records", "number", "Access records to begin with, spread over six months.", "60", 0,
     MostRecords},
};

QString descriptionOf(const NumberOption &number)
{
    return QStringLiteral("%1 From %2 to %3, default %4.")
        .arg(QString::fromLatin1(number.description), QString::number(number.lowest),
             QString::number(number.highest), QString::fromLatin1(number.value));
}

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("A simulated palm-recognition terminal."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("address"),
                      QStringLiteral("Listen on this IP address. Default 127.0.0.1."),
                      QStringLiteral("address"), QStringLiteral("127.0.0.1")});
    for (const NumberOption &number : Numbers)
        parser.addOption({QString::fromLatin1(number.name), descriptionOf(number),
                          QString::fromLatin1(number.valueName),
                          QString::fromLatin1(number.value)});
    parser.addOption({QStringLiteral("data"),
                      QStringLiteral("Keep the terminal's state in this file; what it holds goes "
                                     "before --records. By default nothing is kept."),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("fault"), faultSyntax(), QStringLiteral("fault")});
    parser.addOption(
        {QStringLiteral("end-with-input"), QStringLiteral("End when the standard input does.")});
    parser.addOption(
        {QStringLiteral("verbose"), QStringLiteral("Print a line for each command on stderr.")});
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

bool readFaults(const QCommandLineParser &parser, QVector<Fault> *faults, QString *error)
{
    const QStringList texts = parser.values(QStringLiteral("fault"));
    for (const QString &text : texts) {
        Fault fault;
        QString reason;
        if (!parseFault(text, &fault, &reason)) {
            *error = QStringLiteral("%1 (%2)").arg(complaint("fault", text), reason);
            return false;
        }
        *faults << fault;
    }
    return true;
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
    if (!readAddress(parser, &settings->address, error) || !readNumbers(parser, numbers, error) ||
        !readFaults(parser, &settings->terminal.faults.faults, error))
        return false;
    settings->port = static_cast<quint16>(numbers[Port]);
    settings->dataFile = parser.value(QStringLiteral("data"));
    if (parser.isSet(QStringLiteral("data")) && settings->dataFile.isEmpty()) {
        *error = complaint("data", settings->dataFile);
        return false;
    }
    settings->endWithInput = parser.isSet(QStringLiteral("end-with-input"));
    settings->verbose = parser.isSet(QStringLiteral("verbose"));
    settings->terminal.pushPort = static_cast<quint16>(numbers[PushPort]);
    settings->terminal.pushIntervalMs = static_cast<int>(numbers[PushInterval]) * 1000;
    settings->terminal.seed = numbers[Seed];
    settings->terminal.faults.seed = numbers[Seed];
    settings->terminal.faults.bytesPerSecond = numbers[Rate];
    settings->terminal.faults.delayMs = static_cast<int>(numbers[Delay]);
    settings->terminal.maxUsers = static_cast<int>(numbers[MaxUsers]);
    settings->terminal.enrollMs = static_cast<int>(numbers[EnrollSeconds]) * 1000;
    settings->terminal.rebootMs = static_cast<int>(numbers[RebootSeconds]) * 1000;
    settings->terminal.records = static_cast<int>(numbers[Records]);
    return true;
}

} // namespace sim
