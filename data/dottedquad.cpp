#include "data/dottedquad.h"

#include <QStringList>

#include <algorithm>

bool isDottedQuad(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    return parts.size() == 4 && std::all_of(parts.begin(), parts.end(), [](const QString &part) {
               return static_cast<quint32>(part.toInt()) <= 255;
           });
}
