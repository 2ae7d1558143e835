#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

/// One command whose reply suffers one fault.
struct FaultCase
{
    using Change = std::function<QByteArray(const QByteArray &reply)>;

    /// What the connection is to go through besides.
    enum class End : quint8 { Stays, Closed, Reset };

    size_t command;  ///< in manners()
    QByteArray kind; ///< cases are counted by it
    /// The faults as the terminal is told them, but for the command, with blanks between; for a
    /// reply of so many bytes.
    std::function<QString(int replySize)> fault;
    Change arrival; ///< what arrives in place of the honest reply
    End end = End::Stays;
    int previous = -1; ///< a command whose late reply comes ahead of this one's

    /// Whether so many bytes all arrive: not with a reset, nor when they take too long.
    bool arrivesWhole(int size) const;
    /// The first bytes of a reply of so many, as far as they are always the same: not where there
    /// are pictures, or no status but a value that changes.
    int certainBytes(int size) const;
};

/// Every command with every fault, in the same order whenever it is called.
std::vector<FaultCase> faultCases();
