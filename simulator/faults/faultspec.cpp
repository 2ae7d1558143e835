#include "simulator/faults/fault.h"

#include "simulator/commands/command.h"

#include <algorithm>

namespace sim {
namespace {

using Form = FaultKind::Form;

constexpr int MaxRequests = 1'000'000'000;
constexpr int MaxCode = 0xFF;

struct Setting
{
    const char *name;
    int Fault::*member;
    int lowest;
    int highest;
};

constexpr Setting Settings[] = {
    {"from", &Fault::from, 1, MaxRequests},
    {"times", &Fault::times, 1, MaxRequests},
    {"pause", &Fault::pauseMs, 0, Fault::MaxMs},
};

QString complaint(const char *reason, const QString &part)
{
    return QStringLiteral("%1 \"%2\"").arg(QString::fromLatin1(reason), part);
}

bool readNumber(const QString &text, int lowest, int highest, int *number)
{
    bool isNumber = false;
    *number = text.toInt(&isNumber, text.startsWith("0x") ? 16 : 10);
    return isNumber && *number >= lowest && *number <= highest;
}

bool readCommand(const QString &text, int *code)
{
    if (text == "all")
        return true;
    for (*code = 0; *code <= MaxCode; ++*code) {
        const Command *command = findCommand(static_cast<quint8>(*code));
        if (command && text == command->name)
            return true;
    }
    return text.startsWith("0x") && readNumber(text, 0, MaxCode, code);
}

bool readValue(const FaultKind &kind, bool isGiven, const QString &text, int *value)
{
    if (!isGiven || kind.form == Form::None)
        return !isGiven && (kind.form == Form::None || kind.form == Form::Optional);
    const bool isAfter = text == "after";
    *value = isAfter ? Fault::WholeReply : 0;
    return (kind.form == Form::Place && (isAfter || text == "before")) ||
           readNumber(text, kind.lowest, kind.highest, value);
}

/// Reads one of the words between commas; returns what is wrong with it, or an empty text.
QString readWord(const QString &word, Fault &fault)
{
    const QString name = word.section('=', 0, 0);
    const QString value = word.section('=', 1);
    bool isGood = false;
    const auto *setting = std::find_if(std::begin(Settings), std::end(Settings),
                                       [&](const Setting &s) { return name == s.name; });
    if (const FaultKind *kind = findKind(name, value)) {
        if (fault.kind)
            return complaint("a second kind of fault:", word);
        fault.kind = kind;
        isGood = readValue(*kind, word != name, value, &fault.value);
    } else if (name == "chance") {
        fault.chance = value.toDouble(&isGood);
        isGood = isGood && fault.chance >= 0 && fault.chance <= 1;
    } else if (setting != std::end(Settings)) {
        isGood = readNumber(value, setting->lowest, setting->highest, &(fault.*setting->member));
    } else {
        return complaint("unknown word", word);
    }
    return isGood ? QString() : complaint("bad value:", word);
}

QString readFault(const QString &text, Fault &fault)
{
    const int colon = text.indexOf(':');
    if (colon < 0)
        return complaint("no colon in", text);
    if (!readCommand(text.left(colon), &fault.command))
        return complaint("unknown command", text.left(colon));
    QStringList names;
    for (const QString &word : text.mid(colon + 1).split(',')) {
        const QString name = word.section('=', 0, 0);
        QString wrong =
            names.contains(name) ? complaint("said twice:", name) : readWord(word, fault);
        if (!wrong.isEmpty())
            return wrong;
        names << name;
    }
    if (!fault.kind)
        return complaint("no kind of fault in", text);
    const bool isPauseUseless = names.contains("pause") && !names.contains("pieces");
    return isPauseUseless ? complaint("only pieces have a pause:", text) : QString();
}

} // namespace

bool parseFault(const QString &text, Fault *fault, QString *error)
{
    Fault read;
    *error = readFault(text, read);
    if (error->isEmpty())
        *fault = read;
    return error->isEmpty();
}

QString faultSyntax()
{
    return QStringLiteral("COMMAND:KIND[,from=N][,times=N][,chance=P]; may be given several times. "
                          "Default none.\n"
                          "COMMAND is a name such as getUserList, a code such as 0x10, or all.\n"
                          "from is the first request that is struck (1 to %1, default 1).\n"
                          "times is the most strikes (1 to %1, default no limit).\n"
                          "chance is the probability of a strike (0 to 1, default 1).\n"
                          "KIND is one of:\n%2\n"
                          "pieces also takes pause=MS (0 to %3, default 0).")
        .arg(QString::number(MaxRequests), listKinds(), QString::number(Fault::MaxMs));
}

} // namespace sim
