#pragma once

#include <QDateTime>

namespace sim {

// Times as on the wall are kept as UTC, where no hour is missing or comes twice.

/// "yyyy-MM-dd hh:mm:ss"
QString timeText(const QDateTime &time);
/// Invalid unless the text is exactly what timeText() gives.
QDateTime readTimeText(const QString &text);

} // namespace sim
