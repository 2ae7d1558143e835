#pragma once

#include <QDateTime>
#include <QVector>

#include <algorithm>
#include <map>

namespace sim {

struct User;

struct AccessRecord
{
    enum class Type : quint8 { Palm = 0, Card = 1 };

    Type type = Type::Palm;
    QDateTime time; ///< wall clock time kept as UTC
    QString userName;
    QString department;
};

/// Year and month (1-12).
using Month = std::pair<int, int>;

/// The records of a month have numbers from 0 on, which they keep. Records below `spread` are those
/// of a new terminal, evenly spread over the month; the passages follow.
struct MonthRecords
{
    int spread = 0;
    int first = 0;            ///< number of the oldest record that is still there
    QByteArray passages = {}; ///< times of those still there: seconds of the month, big-endian

    static constexpr int PassageSize = sizeof(quint32);
    int count() const { return std::max(spread - first, 0) + passages.size() / PassageSize; }
};

/// All access records. Only the times of passages are stored; everything else is computed from a
/// record's number, so that many records need no memory.
struct RecordBook
{
    quint32 seed = 1;
    QDateTime until;                      ///< end of the spread records; wall clock kept as UTC
    std::map<Month, MonthRecords> months; ///< with 1 or more records each
};

constexpr int MaxMonths = 100;
constexpr int MaxRecords = 200000; ///< a month

/// Spreads `count` records over up to six months. The month of `until` gets half of them, the month
/// before half of the rest, and so on.
RecordBook makeRecords(quint32 seed, int count, const QDateTime &until);

/// Adds a record at the end of its month. Returns false, with the book unchanged, when the month or
/// the book is full.
bool addPassage(RecordBook &book, const QDateTime &time);

/// Deletes the oldest records until the book has no more than `most`; 0: no limit.
void keepNewest(RecordBook &book, int most);

int recordCount(const RecordBook &book, const Month &month);

/// `index` is from 0 to the month's count - 1. Spread records are in the order of their times.
AccessRecord recordAt(const RecordBook &book, const Month &month, int index);

/// Returns "yyyy-MM-dd hh:mm:ss".
QString timeText(const QDateTime &time);
/// Returns an invalid time unless the text is exactly what timeText() returns. The time is UTC, as
/// all wall clock times are kept, because no hour is missing there or occurs twice.
QDateTime readTimeText(const QString &text);

/// The users of a new terminal, who are also those of all access records.
QVector<User> sampleUsers();

} // namespace sim
