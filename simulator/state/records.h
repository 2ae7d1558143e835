#pragma once

#include <QDateTime>
#include <QString>

#include <map>
#include <utility>

namespace sim {

struct AccessRecord
{
    enum class Type : quint8 { Palm = 0, Card = 1 };

    Type type = Type::Palm;
    QDateTime time; ///< as on the wall, kept as UTC
    QString userName;
    QString department;
};

/// Year and month (1-12).
using Month = std::pair<int, int>;

/// All access records. None of them is stored: each is computed from its number, so that any
/// amount costs nothing.
struct RecordBook
{
    quint32 seed = 1;
    QDateTime until;             ///< no record is later; as on the wall, kept as UTC
    std::map<Month, int> counts; ///< months with 1 or more records
};

/// The most months and the most records in each that a terminal holds.
constexpr int MostMonths = 100;
constexpr int MostRecords = 200000;

/// Up to six months that end with the one of `until`, which gets half of all records, the one
/// before it half of what is left, and so on.
RecordBook makeRecords(quint32 seed, int count, const QDateTime &until);

int recordCount(const RecordBook &book, const Month &month);

/// In the order of their times; `index` from 0 to the month's count - 1.
AccessRecord recordAt(const RecordBook &book, const Month &month, int index);

} // namespace sim
