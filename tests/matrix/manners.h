#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// What a command makes of a reply.
struct Verdict
{
    bool accepted;
    QString lines; ///< that it leaves in the log
    QByteArray result;
};

/// How a command takes its reply: told here once more, apart from the client.
struct Manner
{
    enum Wait : quint8 { Known, Declared };
    enum Rule : quint8 {
        Always,   ///< accepted as soon as it is there
        ByStatus, ///< whatever length it declares
        Text,     ///< all that it declares must be there and fit
        Page,     ///< the same for all the records that it counts
        Block,    ///< it must declare exactly the bytes that there are to be
        AtLeast,  ///< so many bytes must have come, or more
        Frame,    ///< like Block, without a status
    };

    const char *name;
    Wait wait;
    int bytes; ///< the known length, or the most that is waited for
    int rounds;
    Rule rule;
    int capacity; ///< of the caller, behind the status
    int fixed;    ///< bytes up to the end of the fields that stand at a fixed place
    const char *onSilence;
    const char *onStatus; ///< "STATUS text|…|* text"; in the last %d, %s (signed) or %c: the status
    QByteArray (*result)(const QByteArray &reply);

    bool isComplete(const QByteArray &arrived) const;
    Verdict timedOut() const;
    /// Of a reply that is complete.
    Verdict judge(const QByteArray &arrived) const;
    /// Whether its honest reply has more than the fixed fields.
    bool isLong() const;
    /// Whether what follows the head is no status.
    bool isPlain() const { return rule == Always || rule == Frame; }

private:
    bool holds(const QByteArray &arrived) const;
    QString refusal(quint8 status) const;
};

const std::vector<Manner> &manners();
