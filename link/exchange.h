#pragma once

#include "link/wire.h"

/// Rounds of a millisecond that nearly all commands wait for their reply.
constexpr int TimeOutRounds = 1000;

/// How a command waits: for a length that the console knows, or for the one that the reply
/// declares. A silent one leaves no line on a time-out.
struct Wait
{
    enum Kind : quint8 { Ack, Reply } kind;
    size_t bytes; ///< the known length, or the most that is waited for
    bool silent = false;
    int rounds = TimeOutRounds;
};

constexpr Wait StatusWait{Wait::Ack, wire::AckSize};
constexpr Wait SilentStatusWait{Wait::Ack, wire::AckSize, true};

/// What a command says of a status that refuses it; one row of its table, whose last row is for any
/// status that has none. Texts are untranslated, in the context CmdClient.
struct StatusText
{
    /// How the status takes the place of the text's %1.
    enum Form : quint8 { Plain, Decimal, SignedDecimal, Character };

    static constexpr int AnyOther = -1;

    int status; ///< 1 to 255, or AnyOther
    const char *text;
    Form form = Plain;
};

/// For commands that know no status but success.
constexpr StatusText UnknownError[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText UnknownErrorNumber[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error: %1"),
     StatusText::Decimal},
};
