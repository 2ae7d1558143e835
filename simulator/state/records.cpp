#include "simulator/state/records.h"

#include "simulator/state/samples.h"

#include <algorithm>

namespace sim {
namespace {

constexpr int SpreadMonths = 6;
constexpr quint64 CardEvery = 4; // one passage of so many is by card

Month monthOf(const QDate &date)
{
    return {date.year(), date.month()};
}

/// Well-mixed bits for a record's number.
quint64 mixed(quint64 number)
{
    number += 0x9E3779B97F4A7C15U;
    number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31U);
}

quint64 bitsOf(const RecordBook &book, const Month &month, int index)
{
    const auto months = quint64(month.first) * 12 + quint64(month.second);
    return mixed(mixed(quint64{book.seed} << 32U | months) + static_cast<quint64>(index));
}

/// Each record has a slot of its own in the month, so that their order is that of their numbers.
QDateTime timeOf(const RecordBook &book, const Month &month, int index, quint64 bits)
{
    const QDate first(month.first, month.second, 1);
    const QDateTime start(first, QTime(0, 0), Qt::UTC);
    const QDateTime over(first.addMonths(1), QTime(0, 0), Qt::UTC);
    const qint64 span = start.msecsTo(book.until >= start ? std::min(over, book.until) : over);
    const qint64 slot = span / std::max(recordCount(book, month), 1);
    const auto within = static_cast<qint64>(bits % static_cast<quint64>(std::max(slot, qint64{1})));
    return start.addMSecs(slot * index + within);
}

} // namespace

RecordBook makeRecords(quint32 seed, int count, const QDateTime &until)
{
    RecordBook book{seed, until, {}};
    for (int i = 0; i < SpreadMonths && count > 0; ++i) {
        const int share = i + 1 < SpreadMonths ? (count + 1) / 2 : count;
        book.counts[monthOf(until.date().addMonths(-i))] = share;
        count -= share;
    }
    return book;
}

int recordCount(const RecordBook &book, const Month &month)
{
    const auto found = book.counts.find(month);
    return found == book.counts.end() ? 0 : found->second;
}

AccessRecord recordAt(const RecordBook &book, const Month &month, int index)
{
    static const QVector<User> people = sampleUsers();
    const quint64 bits = bitsOf(book, month, index);
    const User &user = people.at(static_cast<int>((bits >> 40U) % quint64(people.size())));
    const bool byCard = (bits >> 32U) % CardEvery == 0;
    return {byCard ? AccessRecord::Type::Card : AccessRecord::Type::Palm,
            timeOf(book, month, index, bits), user.name, user.department};
}

} // namespace sim
