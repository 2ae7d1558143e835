#include "simulator/program.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cmath>
#include <cstdio>
#include <limits>

namespace sim {
namespace {

struct Option
{
    const char *name;
    const char *valueName; ///< empty: the option has no value
    const char *value;     ///< default
    const char *description;
    double lowest = 0;
    double highest = 0; ///< 0: the value is no number
};

constexpr double MaxSeed = std::numeric_limits<quint32>::max();
constexpr int MaxRate = 1'000'000'000;
constexpr int MaxPassages = 60'000;

constexpr Option Options[] = {
    {"address", "address", "127.0.0.1", "Listen on this IP address. Default 127.0.0.1."},
    {"port", "port", "20086", "Listen on this port; 0 picks a free one.", 0, 65535},
    {"terminals", "number", "1", "Number of simulated terminals, on consecutive ports.", 1, 250},
    {"push-port", "port", "0", "Push messages to this port; 0: the announced one.", 0, 65535},
    {"push-interval", "seconds", "5", "Time between two pushed messages.", 1, 3600},
    {"seed", "number", "1", "Start of everything random.", 0, MaxSeed},
    {"rate", "bytes", "0", "Most bytes a second to each console; 0: no limit.", 0, MaxRate},
    {"delay", "ms", "0", "Time added to the round trip of every command.", 0, Fault::MaxMs},
    {"max-users", "number", "3000", "Users that the database holds.", 1, 10000},
    {"enroll-seconds", "seconds", "3", "Time that an enrollment takes.", 0, 60},
    {"reboot-seconds", "seconds", "10", "Time that a reboot takes.", 0, 60},
    {"records", "number", "60", "Access records of a new terminal.", 0, MaxRecords},
    {"ring", "number", "0", "Most access records, then the oldest go; 0: no limit.", 0, MaxRecords},
    {"passages", "rate", "0", "New access records a minute, on average.", 0, MaxPassages},
    {"data", "file", "",
     "Keep the terminal's state in this file; an existing state replaces --records. More terminals "
     "use FILE.2, FILE.3 and so on. By default nothing is kept."},
    {"one-client", "", "", "Accept a connection only when the one before has ended."},
    {"import-replaces", "", "", "An import replaces the user's features instead of adding some."},
    {"end-with-input", "", "", "End when the standard input does."},
    {"verbose", "", "", "Print a line for each command on stderr."},
};

QString helpOf(const Option &option)
{
    if (option.highest == 0)
        return option.description;
    return QStringLiteral("%1 From %2 to %3, default %4.")
        .arg(option.description, QString::number(option.lowest, 'f', 0),
             QString::number(option.highest, 'f', 0), option.value);
}

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription("A simulated palm-recognition terminal.");
    parser.addHelpOption();
    parser.addVersionOption();
    for (const Option &option : Options)
        parser.addOption({option.name, helpOf(option), option.valueName, option.value});
    parser.addOption({"fault", faultSyntax(), "fault"});
}

void printLine(const QString &line)
{
    std::fprintf(stderr, "%s\n", qPrintable(line));
}

QString complaint(const char *option, const QString &value)
{
    return QStringLiteral("Bad value for --%1: %2").arg(option, value);
}

/// Returns what is wrong with the first bad number, or an empty text.
QString badNumber(const QCommandLineParser &parser)
{
    for (const Option &option : Options) {
        const QString text = parser.value(option.name);
        bool isNumber = option.highest == 0;
        double value = 0;
        if (qstrcmp(option.name, "passages") == 0)
            value = text.toDouble(&isNumber);
        else if (!isNumber)
            value = text.toUInt(&isNumber);
        if (!isNumber || value < option.lowest || value > option.highest || std::isnan(value))
            return complaint(option.name, text);
    }
    return {};
}

/// Returns what is wrong with the first bad fault, or an empty text.
QString readFaults(const QStringList &texts, QVector<Fault> *faults)
{
    for (const QString &text : texts) {
        Fault fault;
        QString reason;
        if (!parseFault(text, &fault, &reason))
            return QStringLiteral("%1 (%2)").arg(complaint("fault", text), reason);
        *faults << fault;
    }
    return {};
}

/// All numbers are good.
void takeNumbers(const QCommandLineParser &parser, Settings *settings)
{
    const auto number = [&](const char *name) { return parser.value(name).toUInt(); };
    const auto integer = [&](const char *name) { return static_cast<int>(number(name)); };
    TerminalOptions &terminal = settings->terminal;
    settings->port = static_cast<quint16>(number("port"));
    settings->terminals = integer("terminals");
    terminal.pushPort = static_cast<quint16>(number("push-port"));
    terminal.pushIntervalMs = integer("push-interval") * 1000;
    terminal.seed = number("seed");
    terminal.faults.seed = number("seed");
    terminal.faults.bytesPerSecond = number("rate");
    terminal.faults.delayMs = integer("delay");
    terminal.maxUsers = integer("max-users");
    terminal.enrollMs = integer("enroll-seconds") * 1000;
    terminal.rebootMs = integer("reboot-seconds") * 1000;
    terminal.records = integer("records");
    terminal.ring = integer("ring");
    terminal.passages = parser.value("passages").toDouble();
}

} // namespace

bool readArguments(const QCoreApplication &app, Settings *settings, QString *error)
{
    QCommandLineParser parser;
    describe(parser);
    parser.process(app);
    settings->dataFile = parser.value("data");
    *error = badNumber(parser);
    if (!parser.positionalArguments().isEmpty())
        *error = "Unexpected argument: " + parser.positionalArguments().first();
    else if (!settings->address.setAddress(parser.value("address")))
        *error = complaint("address", parser.value("address"));
    else if (parser.isSet("data") && settings->dataFile.isEmpty())
        *error = complaint("data", settings->dataFile);
    if (error->isEmpty())
        *error = readFaults(parser.values("fault"), &settings->terminal.faults.faults);
    if (!error->isEmpty())
        return false;
    takeNumbers(parser, settings);
    settings->endWithInput = parser.isSet("end-with-input");
    if (parser.isSet("verbose"))
        settings->terminal.log = printLine;
    settings->terminal.oneClient = parser.isSet("one-client");
    settings->terminal.importReplaces = parser.isSet("import-replaces");
    return true;
}

} // namespace sim
