#pragma once

#include "link/wire.h"

/// Timeout of nearly all commands, in rounds of a millisecond.
constexpr int TimeOutRounds = 1000;

/// What a command waits for: a length that the console knows, or the length that the reply
/// declares. A silent command logs nothing on a timeout.
struct Wait
{
    enum Kind : quint8 { Ack, Reply } kind;
    size_t bytes; ///< the known length, or the maximum
    bool silent = false;
    int rounds = TimeOutRounds;
};

constexpr Wait StatusWait{Wait::Ack, wire::AckSize};
constexpr Wait SilentStatusWait{Wait::Ack, wire::AckSize, true};

/// Maps an error status to its log message. The last row of a command's table is for any status
/// without a row. Texts are untranslated, in the context CmdClient.
struct StatusText
{
    /// How the status replaces %1 in the text.
    enum Form : quint8 { Plain, Decimal, SignedDecimal, Character };

    static constexpr int AnyOther = -1;

    int status; ///< 1 to 255, or AnyOther
    const char *text;
    Form form = Plain;
};

/// Messages of commands that distinguish no error status.
constexpr StatusText UnknownError[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText UnknownErrorNumber[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error: %1"),
     StatusText::Decimal},
};
