#include "bench/measure.h"

#include "bench/census.h"

#include <QApplication>
#include <QDir>

#include <algorithm>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

constexpr qint64 KiB = 1024;
constexpr qint64 Unmeasured = -1;

// Permitted growth of the heap: the larger of the two.
constexpr qint64 HeapPercent = 2;
constexpr qint64 HeapSlack = 1024; // KiB

constexpr int Fifth = 5; // warm-up and compared ranges are a fifth of the rounds each
constexpr int MinWarmUp = 2;

enum class Rule { Shown, HeapBounds, AtMost, Equal };

struct QuantityRow
{
    const char *name;
    int width;
    Rule rule;
};

constexpr QuantityRow Rows[QuantityCount] = {
    {"RSS KiB", 8, Rule::Shown},  {"heap KiB", 9, Rule::HeapBounds}, {"fds", 4, Rule::Equal},
    {"objects", 8, Rule::AtMost}, {"timers", 7, Rule::Equal},        {"sockets", 8, Rule::Equal},
    {"windows", 8, Rule::Equal},
};

/// Returns the size of all allocated blocks. A sanitizer's heap reports none.
qint64 heapKiB()
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 33)
    const struct mallinfo2 info = mallinfo2();
    const auto bytes = static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
    return bytes > 0 ? bytes / KiB : Unmeasured;
#else
    return Unmeasured;
#endif
}

/// Returns the number of open file descriptors without those of the event dispatchers.
qint64 descriptorCount(int dispatchers)
{
    const QDir folder(QStringLiteral("/proc/self/fd"));
    const auto entries = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
    return folder.exists() ? folder.entryList(entries).size() - dispatchers : Unmeasured;
}

qint64 median(const std::vector<Sample> &samples, size_t from, size_t count, Quantity quantity)
{
    std::vector<qint64> values;
    for (size_t i = from; i < from + count; ++i)
        values.push_back(samples[i].values[quantity]);
    std::nth_element(values.begin(), values.begin() + static_cast<long>(count / 2), values.end());
    return values[count / 2];
}

} // namespace

qint64 residentKiB()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return Unmeasured;
    const QByteArray text = file.readAll();
    const int at = text.indexOf("VmRSS:");
    return at < 0 ? Unmeasured : text.mid(at).simplified().split(' ').value(1).toLongLong();
}

Sample takeSample()
{
    const census::Count count = census::count();
    return {{residentKiB(), heapKiB(), descriptorCount(count.dispatchers), count.objects,
             count.timers, count.sockets, QApplication::topLevelWidgets().size()}};
}

bool hasSettled(const Sample &sample, const Sample &before)
{
    for (int i = 0; i < QuantityCount; ++i) {
        const bool mustSettle = Rows[i].rule == Rule::Equal || Rows[i].rule == Rule::AtMost;
        if (mustSettle && sample.values[i] != before.values[i])
            return false;
    }
    return true;
}

QString headline()
{
    QString text;
    for (const QuantityRow &row : Rows)
        text += QStringLiteral(" %1").arg(QLatin1String(row.name), row.width);
    return text;
}

QString columns(const Sample &sample)
{
    QString text;
    for (int i = 0; i < QuantityCount; ++i) {
        const qint64 value = sample.values[i];
        text += QStringLiteral(" %1").arg(
            value == Unmeasured ? QStringLiteral("-") : QString::number(value), Rows[i].width);
    }
    return text;
}

QStringList unmeasured(const Sample &sample)
{
    QStringList names;
    for (int i = 0; i < QuantityCount; ++i) {
        if (sample.values[i] == Unmeasured)
            names.append(QLatin1String(Rows[i].name));
    }
    return names;
}

int warmUp(int rounds)
{
    return std::max(MinWarmUp, (rounds + Fifth - 1) / Fifth);
}

/// Memory fluctuates, so medians are compared. Objects must not have become more: a thread of Qt's
/// pools takes some with it when it ends. Every other quantity must be the same at the end.
QStringList growth(const std::vector<Sample> &samples)
{
    const size_t rounds = samples.size();
    const size_t width = std::max<size_t>(1, rounds / Fifth);
    const auto begin = static_cast<size_t>(warmUp(static_cast<int>(rounds)));
    QStringList found;
    for (int i = 0; i < QuantityCount; ++i) {
        const auto quantity = static_cast<Quantity>(i);
        const qint64 before = median(samples, begin, width, quantity);
        const bool isHeap = Rows[i].rule == Rule::HeapBounds;
        const qint64 after =
            isHeap ? median(samples, rounds - width, width, quantity) : samples.back().values[i];
        const qint64 maxGrowth = isHeap ? std::max(HeapSlack, before * HeapPercent / 100) : 0;
        const bool hasFallen = Rows[i].rule == Rule::Equal && after < before;
        if (Rows[i].rule != Rule::Shown && (after - before > maxGrowth || hasFallen))
            found.append(QStringLiteral("%1: %2 after the warm-up, %3 at the end")
                             .arg(QLatin1String(Rows[i].name), QString::number(before),
                                  QString::number(after)));
    }
    return found;
}
