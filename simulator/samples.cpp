#include "simulator/samples.h"

#include <QRandomGenerator>

namespace sim {
namespace {

constexpr int RecordCount = 60;
constexpr quint32 RecordGapHours = 50; // between two records, at most

QrCode code(const char *note, const char *data, const QDateTime &start, const QDateTime &end)
{
    return {QString::fromUtf8(note), QString::fromUtf8(data), start, end};
}

AccessRecord record(const User &user, const QDateTime &time, bool byCard)
{
    return {byCard ? AccessRecord::Type::Card : AccessRecord::Type::Palm, time, user.name,
            user.department};
}

} // namespace

QVector<User> sampleUsers()
{
    const QString research = QStringLiteral("研发部");
    const QString finance = QStringLiteral("财务部");
    const QString operations = QStringLiteral("Operations");
    return {
        {1, 10023001, QStringLiteral("王小明"), research, 3, 3},
        {2, 10023002, QStringLiteral("李婷"), finance, 3, 3},
        {3, 10023003, QStringLiteral("Anna Keller"), operations, 3, 3},
        {4, 10023004, QStringLiteral("张伟"), research, 6, 6},
        {5, 10023005, QStringLiteral("José Marín"), operations, 3, 0},
        {6, 10023006, QStringLiteral("欧阳娜"), QStringLiteral("前台"), 3, 3},
        {8, 10023008, QStringLiteral("Tom Baker"), operations, 0, 0},
        {12, 4294967295U, QStringLiteral("陈 David"), finance, 3, 3},
    };
}

Records sampleRecords(const QVector<User> &users, const QDateTime &now, quint32 seed)
{
    QRandomGenerator random(seed);
    QVector<AccessRecord> course;
    QDateTime time = now;
    for (int i = 0; i < RecordCount; ++i) {
        time = time.addSecs(-static_cast<qint64>(random.bounded(600U, RecordGapHours * 3600)));
        const User &user = users.at(static_cast<int>(random.bounded(quint32(users.size()))));
        course.prepend(record(user, time, random.bounded(4) == 0));
    }
    Records records;
    for (const AccessRecord &passage : qAsConst(course))
        records[{passage.time.date().year(), passage.time.date().month()}].append(passage);
    return records;
}

QVector<QrCode> sampleQrCodes(const QDateTime &now)
{
    return {
        code("visitor Lind", "KV-VISIT-7F31C2", now.addDays(-1), now.addDays(6)),
        code("保洁", "KV-CLEAN-0042", now.addMonths(-6), now.addMonths(6)),
        code("delivery", "https://kovant.example/pass?d=20983", now.addDays(-40), now.addDays(-33)),
    };
}

} // namespace sim
