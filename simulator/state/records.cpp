#include "simulator/state/records.h"

#include "simulator/state/state.h"

#include <QLocale>
#include <QtEndian>

#include <algorithm>
#include <numeric>

namespace sim {
namespace {

constexpr int SpreadMonths = 6;
constexpr quint64 CardEvery = 4; // every fourth passage is by card

Month monthOf(const QDate &date)
{
    return {date.year(), date.month()};
}

QDateTime startOf(const Month &month)
{
    return {QDate(month.first, month.second, 1), QTime(0, 0), Qt::UTC};
}

/// Returns well-mixed bits for a number.
quint64 mixed(quint64 number)
{
    number += 0x9E3779B97F4A7C15U;
    number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31U);
}

/// Each spread record has a slot of its own in the month, so that their times have the order of
/// their numbers.
QDateTime spreadTime(const RecordBook &book, const Month &month, int spread, int number,
                     quint64 bits)
{
    const QDateTime start = startOf(month);
    const QDateTime over = start.addMonths(1);
    const qint64 span = start.msecsTo(book.until >= start ? std::min(over, book.until) : over);
    const qint64 slot = span / spread;
    const auto within = static_cast<qint64>(bits % static_cast<quint64>(std::max(slot, qint64{1})));
    return start.addMSecs(slot * number + within);
}

QDateTime passageTime(const MonthRecords &records, const Month &month, int number)
{
    const int index = number - std::max(records.first, records.spread);
    const char *bytes = records.passages.constData() + ptrdiff_t{index} * MonthRecords::PassageSize;
    return startOf(month).addSecs(qFromBigEndian<quint32>(bytes));
}

} // namespace

RecordBook makeRecords(quint32 seed, int count, const QDateTime &until)
{
    RecordBook book{seed, until, {}};
    for (int i = 0; i < SpreadMonths && count > 0; ++i) {
        const int share = i + 1 < SpreadMonths ? (count + 1) / 2 : count;
        book.months[monthOf(until.date().addMonths(-i))].spread = share;
        count -= share;
    }
    return book;
}

bool addPassage(RecordBook &book, const QDateTime &time)
{
    const Month month = monthOf(time.date());
    const auto found = book.months.find(month);
    const bool isFull = found == book.months.end() ? book.months.size() >= MaxMonths
                                                   : found->second.count() >= MaxRecords;
    if (isFull)
        return false;
    const auto seconds = qToBigEndian(static_cast<quint32>(startOf(month).secsTo(time)));
    book.months[month].passages.append(reinterpret_cast<const char *>(&seconds), sizeof seconds);
    return true;
}

void keepNewest(RecordBook &book, int most)
{
    int count =
        std::accumulate(book.months.begin(), book.months.end(), 0,
                        [](int sum, const auto &month) { return sum + month.second.count(); });
    for (; most > 0 && count > most; --count) {
        const auto oldest = book.months.begin();
        MonthRecords &records = oldest->second;
        if (records.first++ >= records.spread)
            records.passages.remove(0, MonthRecords::PassageSize);
        if (records.count() == 0)
            book.months.erase(oldest);
    }
}

int recordCount(const RecordBook &book, const Month &month)
{
    const auto found = book.months.find(month);
    return found == book.months.end() ? 0 : found->second.count();
}

AccessRecord recordAt(const RecordBook &book, const Month &month, int index)
{
    static const QVector<User> people = sampleUsers();
    const MonthRecords &records = book.months.at(month);
    const int number = records.first + index;
    const auto months = quint64(month.first) * 12 + quint64(month.second);
    const quint64 bits = mixed(mixed(quint64{book.seed} << 32U | months) + quint64(number));
    const User &user = people.at(static_cast<int>((bits >> 40U) % quint64(people.size())));
    const bool byCard = (bits >> 32U) % CardEvery == 0;
    return {byCard ? AccessRecord::Type::Card : AccessRecord::Type::Palm,
            number < records.spread ? spreadTime(book, month, records.spread, number, bits)
                                    : passageTime(records, month, number),
            user.name, user.department};
}

QString timeText(const QDateTime &time)
{
    return QLocale::c().toString(time, "yyyy-MM-dd hh:mm:ss");
}

QDateTime readTimeText(const QString &text)
{
    const QLocale c = QLocale::c();
    const QDateTime time(c.toDate(text.left(10), "yyyy-MM-dd"), c.toTime(text.mid(11), "hh:mm:ss"),
                         Qt::UTC);
    return time.isValid() && timeText(time) == text ? time : QDateTime();
}

QVector<User> sampleUsers()
{
    return {
        {1, 10023001, "王小明", "研发部", 3, 3},
        {2, 10023002, "李婷", "财务部", 3, 3},
        {3, 10023003, "Anna Keller", "Operations", 3, 3},
        {4, 10023004, "张伟", "研发部", 6, 6},
        {5, 10023005, "José Marín", "Operations", 3, 0},
        {6, 10023006, "欧阳娜", "前台", 3, 3},
        {8, 10023008, "Tom Baker", "Operations", 0, 0},
        {12, 4294967295U, "陈 David", "财务部", 3, 3},
    };
}

} // namespace sim
