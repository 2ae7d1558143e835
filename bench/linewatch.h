#pragma once

#include <QMap>
#include <QStringList>

/// Compares what a step logs with what it logged in the first round: the same lines in the same
/// order, apart from numbers. Repetitions of a line count once.
class LineWatch
{
public:
    /// Returns what differs from the first round, or an empty text. `folder` is the folder for this
    /// round's files.
    QString complaint(const QString &step, const QStringList &lines, const QString &folder);

private:
    QMap<QString, QStringList> known;
};

/// Returns the first line that comes neither from the listener nor from the simulated terminal, or
/// an empty text.
QString unexpectedMessage(const QStringList &lines);

/// Installs a message handler that keeps Qt's warnings, apart from those of a platform without a
/// screen, and drops debug output.
void keepWarnings();
/// Returns the warnings since the last call.
QStringList takeWarnings();
