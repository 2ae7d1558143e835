#include "simulator/faults/faultkinds.h"

#include "simulator/wire/packets.h"

#include "link/wire.h"

#include <QRandomGenerator>

#include <algorithm>
#include <iterator>

namespace sim {
namespace {

using Form = FaultKind::Form;
using Kind = Fault::Kind;

constexpr int MostLength = 0xFFFFFF; // that the head can declare
constexpr int HeadSize = static_cast<int>(wire::HeadSize);
constexpr int MostBytes = HeadSize + MostLength;
constexpr char TrailingByte = '\xEE';

void declare(QByteArray &reply, int length)
{
    const int field = static_cast<int>(wire::LengthOffset);
    for (int i = 0; reply.size() >= HeadSize && i < 3; ++i)
        reply[field + i] = static_cast<char>(length >> (16 - 8 * i));
}

void endAfter(const Strike &strike, Delivery::End end)
{
    strike.reply.bytes.truncate(strike.value);
    strike.reply.end = end;
}

void drop(const Strike &strike)
{
    strike.reply.bytes.clear();
}

void delay(const Strike &strike)
{
    strike.reply.delayMs = std::min(strike.reply.delayMs + strike.value, Fault::MostMs);
}

void cut(const Strike &strike)
{
    const int fromEnd = strike.value < 0 ? strike.reply.bytes.size() : 0;
    strike.reply.bytes.truncate(std::max(fromEnd + strike.value, 0));
}

void pieces(const Strike &strike)
{
    strike.reply.pieceSize = strike.value;
    strike.reply.pauseMs = strike.pauseMs;
}

void length(const Strike &strike)
{
    declare(strike.reply.bytes, strike.value);
}

void lengthOff(const Strike &strike)
{
    const int body = strike.reply.bytes.size() - HeadSize;
    declare(strike.reply.bytes, std::clamp(body + strike.value, 0, MostLength));
}

void status(const Strike &strike)
{
    strike.reply.bytes = statusReply(static_cast<Status>(strike.value));
}

void garbage(const Strike &strike)
{
    for (char &byte : strike.reply.bytes)
        byte = static_cast<char>(strike.random.bounded(256));
}

void closeAfter(const Strike &strike)
{
    endAfter(strike, Delivery::End::Close);
}

void resetAfter(const Strike &strike)
{
    endAfter(strike, Delivery::End::Reset);
}

void trail(const Strike &strike)
{
    strike.reply.bytes.append(strike.value, TrailingByte);
}

void doubleReply(const Strike &strike)
{
    strike.reply.againMs = strike.value;
}

void late(const Strike &strike)
{
    strike.reply.late = true;
}

constexpr FaultKind Kinds[] = {
    {Kind::Drop, Form::None, "drop", 0, 0, "", drop},
    {Kind::Delay, Form::Number, "delay", 0, Fault::MostMs, "MS", delay},
    {Kind::Cut, Form::Number, "cut", -MostBytes, MostBytes, "[-]BYTES", cut},
    {Kind::Pieces, Form::Number, "pieces", 1, MostBytes, "BYTES", pieces},
    {Kind::LengthOff, Form::Signed, "length", -MostLength, MostLength, "+N|-N", lengthOff},
    {Kind::Length, Form::Number, "length", 0, MostLength, "N", length},
    {Kind::Status, Form::Number, "status", 0, 255, "N", status},
    {Kind::Garbage, Form::None, "garbage", 0, 0, "", garbage},
    {Kind::CloseAfter, Form::Place, "close", 0, Fault::WholeReply, "before|BYTES|after",
     closeAfter},
    {Kind::ResetAfter, Form::Place, "reset", 0, Fault::WholeReply, "before|BYTES|after",
     resetAfter},
    {Kind::TrailingBytes, Form::Number, "trail", 0, Fault::MostTrailingBytes, "BYTES", trail},
    {Kind::Double, Form::Optional, "double", 0, Fault::MostMs, "MS", doubleReply},
    {Kind::Late, Form::None, "late", 0, 0, "", late},
};

const FaultKind &kindOf(const Fault &fault)
{
    return *std::find_if(std::begin(Kinds), std::end(Kinds),
                         [&](const FaultKind &kind) { return kind.kind == fault.kind; });
}

QString syntaxOf(const FaultKind &kind)
{
    const QString name = QString::fromLatin1(kind.name);
    if (kind.form == Form::None)
        return name;
    const bool optional = kind.form == Form::Optional;
    return QStringLiteral("%1%2 (%3 to %4)")
        .arg(name, QString::fromLatin1(optional ? "[=%1]" : "=%1").arg(QLatin1String(kind.help)),
             QString::number(kind.lowest), QString::number(kind.highest));
}

} // namespace

void applyFault(const Fault &fault, Delivery &reply, QRandomGenerator &random)
{
    const FaultKind &kind = kindOf(fault);
    const int value = std::clamp(fault.value, kind.lowest, kind.highest);
    kind.apply({reply, value, std::clamp(fault.pauseMs, 0, Fault::MostMs), random});
    reply.faults << QString::fromLatin1(kind.name);
}

const FaultKind *findKind(const QString &name, bool hasSign)
{
    const auto *found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [&](const FaultKind &kind) {
            return name == QLatin1String(kind.name) && (hasSign || kind.form != Form::Signed);
        });
    return found == std::end(Kinds) ? nullptr : found;
}

QString listKinds()
{
    QStringList kinds;
    for (const FaultKind &kind : Kinds)
        kinds << syntaxOf(kind);
    return kinds.join(QLatin1Char('\n'));
}

} // namespace sim
