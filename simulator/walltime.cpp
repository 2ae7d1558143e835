#include "simulator/walltime.h"

namespace sim {

QString timeText(const QDateTime &time)
{
    return time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QDateTime readTimeText(const QString &text)
{
    const QDate date = QDate::fromString(text.left(10), QStringLiteral("yyyy-MM-dd"));
    const QDateTime time(date, QTime::fromString(text.mid(11), QStringLiteral("hh:mm:ss")),
                         Qt::UTC);
    const bool exact = date.isValid() && timeText(time) == text;
    return exact ? time : QDateTime();
}

} // namespace sim
