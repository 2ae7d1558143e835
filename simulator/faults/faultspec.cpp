#include "simulator/faults/faultspec.h"

#include "simulator/commands/commands.h"
#include "simulator/faults/faultkinds.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace sim {
namespace {

using Form = FaultKind::Form;

constexpr int MostRequests = 1'000'000'000;
constexpr int CodeEnd = 0x100; // first number that is no command code

struct Setting
{
    const char *name;
    int Fault::*member;
    int lowest;
    int highest;
};

constexpr Setting Settings[] = {
    {"from", &Fault::from, 1, MostRequests},
    {"times", &Fault::times, 1, MostRequests},
    {"pause", &Fault::pauseMs, 0, Fault::MostMs},
};

bool readNumber(const QString &text, int lowest, int highest, int *number)
{
    bool readable = false;
    *number = text.toInt(&readable, text.startsWith(QLatin1String("0x")) ? 16 : 10);
    return readable && *number >= lowest && *number <= highest;
}

bool readPlace(const QString &text, int *place)
{
    const bool after = text == QLatin1String("after");
    *place = after ? Fault::WholeReply : 0;
    return after || text == QLatin1String("before");
}

bool readCode(const QString &text, int *code)
{
    for (*code = 0; *code < CodeEnd; ++*code) {
        const Command *command = findCommand(static_cast<quint8>(*code));
        if (command && text == QLatin1String(command->name))
            return true;
    }
    return text.startsWith(QLatin1String("0x")) && readNumber(text, 0, CodeEnd - 1, code);
}

/// Takes one text apart; the first thing that is wrong ends it.
class Reader
{
public:
    bool read(const QString &text);

    const Fault &fault() const { return m_fault; }
    const QString &error() const { return m_error; }

private:
    bool readCommand(const QString &text);
    bool readWord(const QString &word);
    bool readKind(const FaultKind &kind, const QString &word);
    bool readSetting(const QString &word);
    bool readChance(const QString &word);
    bool refuse(const char *reason, const QString &part);

    QString m_name;  ///< of the word being read
    QString m_value; ///< and what follows its "="
    QStringList m_names;
    bool m_hasKind = false;
    Fault m_fault;
    QString m_error;
};

bool Reader::read(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return refuse("no colon in", text);
    if (!readCommand(text.left(colon)))
        return false;
    const QStringList words = text.mid(colon + 1).split(QLatin1Char(','));
    if (!std::all_of(words.begin(), words.end(), [this](const QString &w) { return readWord(w); }))
        return false;
    if (!m_hasKind)
        return refuse("no kind of fault in", text);
    return m_fault.kind == Fault::Kind::Pieces || !m_names.contains(QStringLiteral("pause")) ||
           refuse("only pieces have a pause:", text);
}

bool Reader::readCommand(const QString &text)
{
    return text == QLatin1String("all") || readCode(text, &m_fault.command) ||
           refuse("unknown command", text);
}

bool Reader::readWord(const QString &word)
{
    m_name = word.section(QLatin1Char('='), 0, 0);
    m_value = word.section(QLatin1Char('='), 1);
    if (m_names.contains(m_name))
        return refuse("said twice:", m_name);
    m_names << m_name;
    const bool hasSign =
        m_value.startsWith(QLatin1Char('+')) || m_value.startsWith(QLatin1Char('-'));
    if (const FaultKind *kind = findKind(m_name, hasSign))
        return readKind(*kind, word);
    return m_name == QLatin1String("chance") ? readChance(word) : readSetting(word);
}

bool Reader::readKind(const FaultKind &kind, const QString &word)
{
    if (m_hasKind)
        return refuse("a second kind of fault:", word);
    m_hasKind = true;
    m_fault.kind = kind.kind;
    const bool good = word == m_name
                          ? kind.form == Form::None || kind.form == Form::Optional
                          : kind.form != Form::None &&
                                ((kind.form == Form::Place && readPlace(m_value, &m_fault.value)) ||
                                 readNumber(m_value, kind.lowest, kind.highest, &m_fault.value));
    return good || refuse("bad value:", word);
}

bool Reader::readSetting(const QString &word)
{
    const auto *setting =
        std::find_if(std::begin(Settings), std::end(Settings),
                     [this](const Setting &s) { return m_name == QLatin1String(s.name); });
    if (setting == std::end(Settings))
        return refuse("unknown word", word);
    return readNumber(m_value, setting->lowest, setting->highest, &(m_fault.*setting->member)) ||
           refuse("bad value:", word);
}

bool Reader::readChance(const QString &word)
{
    bool readable = false;
    m_fault.chance = m_value.toDouble(&readable);
    return (readable && m_fault.chance >= 0 && m_fault.chance <= 1) || refuse("bad value:", word);
}

bool Reader::refuse(const char *reason, const QString &part)
{
    m_error = QStringLiteral("%1 \"%2\"").arg(QString::fromLatin1(reason), part);
    return false;
}

} // namespace

bool parseFault(const QString &text, Fault *fault, QString *error)
{
    Reader reader;
    const bool good = reader.read(text);
    if (good)
        *fault = reader.fault();
    else
        *error = reader.error();
    return good;
}

QString faultSyntax()
{
    return QStringLiteral("COMMAND:KIND[,from=N][,times=N][,chance=P]; may be given several times, "
                          "by default not at all.\n"
                          "COMMAND is a name such as getUserList, a code such as 0x10, or all.\n"
                          "from is the first request that is struck (1 to %1, default 1).\n"
                          "times is so many strikes at most (1 to %1, default no limit).\n"
                          "chance is that of a strike (0 to 1, default 1).\n"
                          "KIND is one of:\n%2\n"
                          "pieces also takes pause=MS (0 to %3, default 0).")
        .arg(QString::number(MostRequests), listKinds(), QString::number(Fault::MostMs));
}

} // namespace sim
