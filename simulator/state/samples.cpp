#include "simulator/state/samples.h"

namespace sim {
namespace {

QrCode code(const char *note, const char *data, const QDateTime &start, const QDateTime &end)
{
    return {QString::fromUtf8(note), QString::fromUtf8(data), start, end};
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

QVector<QrCode> sampleQrCodes(const QDateTime &now)
{
    return {
        code("visitor Lind", "KV-VISIT-7F31C2", now.addDays(-1), now.addDays(6)),
        code("保洁", "KV-CLEAN-0042", now.addMonths(-6), now.addMonths(6)),
        code("delivery", "https://kovant.example/pass?d=20983", now.addDays(-40), now.addDays(-33)),
    };
}

} // namespace sim
