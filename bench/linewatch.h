#pragma once

#include <QMap>
#include <QStringList>

/// Knows what each step logs when it is done for the first time: whenever it is done again it must
/// bring the same lines in the same order, but for numbers. Lines that repeat themselves count
/// once.
class LineWatch
{
public:
    /// What differs from the first time; empty if nothing does. `folder` is where files are in
    /// this round.
    QString complaint(const QString &step, const QStringList &lines, const QString &folder);

private:
    QMap<QString, QStringList> known;
};

/// The first line that cannot come from the listener or the simulated terminal; empty if all can.
QString strangeMessage(const QStringList &lines);

/// From now on Qt's warnings are kept, but for those of a platform without a screen, and the
/// console's debug output goes nowhere.
void keepWarnings();
/// The warnings that have come since the last call.
QStringList takeWarnings();
