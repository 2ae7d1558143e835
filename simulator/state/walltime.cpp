#include "simulator/state/walltime.h"

#include <QLocale>

namespace sim {

QString timeText(const QDateTime &time)
{
    return QLocale::c().toString(time, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QDateTime readTimeText(const QString &text)
{
    const QDate date = QLocale::c().toDate(text.left(10), QStringLiteral("yyyy-MM-dd"));
    const QDateTime time(date, QLocale::c().toTime(text.mid(11), QStringLiteral("hh:mm:ss")),
                         Qt::UTC);
    const bool exact = date.isValid() && timeText(time) == text;
    return exact ? time : QDateTime();
}

} // namespace sim
