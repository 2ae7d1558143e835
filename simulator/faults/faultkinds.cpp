#include "simulator/faults/fault.h"

#include "simulator/wire/packets.h"

#include "link/wire.h"

#include <algorithm>

namespace sim {
namespace {

using Form = FaultKind::Form;

constexpr int MaxLength = 0xFFFFFF; // that the head can declare
constexpr int HeadSize = static_cast<int>(wire::HeadSize);
constexpr int MaxBytes = HeadSize + MaxLength;
constexpr char TrailingByte = '\xEE';
constexpr const char *Places = "before|BYTES|after";

void declare(QByteArray &reply, int length)
{
    const int field = static_cast<int>(wire::LengthOffset);
    for (int i = 0; reply.size() >= HeadSize && i < 3; ++i)
        reply[field + i] = static_cast<char>(length >> (16 - 8 * i));
}

void cut(const Strike &strike)
{
    const int fromEnd = strike.fault.value < 0 ? strike.reply.bytes.size() : 0;
    strike.reply.bytes.truncate(std::max(fromEnd + strike.fault.value, 0));
}

void lengthOff(const Strike &strike)
{
    const int body = strike.reply.bytes.size() - HeadSize;
    declare(strike.reply.bytes, std::clamp(body + strike.fault.value, 0, MaxLength));
}

void garbage(const Strike &strike)
{
    for (char &byte : strike.reply.bytes)
        byte = static_cast<char>(strike.random.bounded(256));
}

void endAfter(const Strike &strike, Delivery::End end)
{
    strike.reply.bytes.truncate(strike.fault.value);
    strike.reply.end = end;
}

constexpr FaultKind Kinds[] = {
    {"drop", Form::None, 0, 0, "", [](const Strike &s) { s.reply.bytes.clear(); }},
    {"delay", Form::Number, 0, Fault::MaxMs, "MS",
     [](const Strike &s) {
         s.reply.delayMs = std::min(s.reply.delayMs + s.fault.value, Fault::MaxMs);
     }},
    {"cut", Form::Number, -MaxBytes, MaxBytes, "[-]BYTES", cut},
    {"pieces", Form::Number, 1, MaxBytes, "BYTES",
     [](const Strike &s) {
         s.reply.pieceSize = s.fault.value;
         s.reply.pauseMs = s.fault.pauseMs;
     }},
    {"length", Form::Signed, -MaxLength, MaxLength, "+N|-N", lengthOff},
    {"length", Form::Number, 0, MaxLength, "N",
     [](const Strike &s) { declare(s.reply.bytes, s.fault.value); }},
    {"status", Form::Number, 0, 255, "N",
     [](const Strike &s) { s.reply.bytes = statusReply(static_cast<Status>(s.fault.value)); }},
    {"garbage", Form::None, 0, 0, "", garbage},
    {"close", Form::Place, 0, Fault::WholeReply, Places,
     [](const Strike &s) { endAfter(s, Delivery::End::Close); }},
    {"reset", Form::Place, 0, Fault::WholeReply, Places,
     [](const Strike &s) { endAfter(s, Delivery::End::Reset); }},
    {"trail", Form::Number, 0, Fault::MaxTrail, "BYTES",
     [](const Strike &s) { s.reply.bytes.append(s.fault.value, TrailingByte); }},
    {"double", Form::Optional, 0, Fault::MaxMs, "MS",
     [](const Strike &s) { s.reply.againMs = s.fault.value; }},
    {"late", Form::None, 0, 0, "", [](const Strike &s) { s.reply.late = true; }},
};

QString syntaxOf(const FaultKind &kind)
{
    QString name = QString::fromLatin1(kind.name);
    if (kind.form == Form::None)
        return name;
    return QStringLiteral("%1%2 (%3 to %4)")
        .arg(name, QString(kind.form == Form::Optional ? "[=%1]" : "=%1").arg(kind.help),
             QString::number(kind.lowest), QString::number(kind.highest));
}

} // namespace

const FaultKind *findKind(const QString &name, const QString &value)
{
    const bool hasSign = value.startsWith('+') || value.startsWith('-');
    const auto *found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [&](const FaultKind &kind) {
            return name == kind.name && (hasSign || kind.form != Form::Signed);
        });
    return found == std::end(Kinds) ? nullptr : found;
}

QString listKinds()
{
    QStringList kinds;
    for (const FaultKind &kind : Kinds)
        kinds << syntaxOf(kind);
    return kinds.join('\n');
}

} // namespace sim
