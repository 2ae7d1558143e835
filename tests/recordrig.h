#pragma once

#include "dialogs/accessrecorddlg.h"
#include "testkit/bytes.h"
#include "testkit/dialogrig.h"

#include <QDateEdit>
#include <QtTest>

// A month with one digit that can be chosen on any day of the year.
inline const QDate Month(QDate::currentDate().year(), 3, 5);
inline const QByteArray Ok = hex("EAC5 000001 00");

inline QByteArray record(int type, const QByteArray &first, const QByteArray &second,
                         const QByteArray &third, const QByteArray &fourth)
{
    return QByteArray(1, static_cast<char>(type)) + "\xEE\xEE\xEE" + first.leftJustified(16, '\0') +
           second.leftJustified(16, '\0') + third.leftJustified(32, '\0') +
           fourth.leftJustified(32, '\0');
}

inline QByteArray bigEndian(quint32 number, int width)
{
    QByteArray bytes;
    while (--width >= 0)
        bytes.append(static_cast<char>(number >> (8 * width)));
    return bytes;
}

inline QByteArray monthRequest(const char *code, const QDate &month)
{
    return hex(code) + bigEndian(static_cast<quint32>(month.year()), 2) +
           static_cast<char>(month.month());
}

inline QByteArray pageRequest(quint32 start)
{
    return hex("EAC5 000008") + monthRequest("43", Month) + bigEndian(start, 4);
}

inline QByteArray page(const QList<QByteArray> &records)
{
    return head(3 + 100 * records.size()) + '\0' +
           bigEndian(static_cast<quint32>(records.size()), 2) + records.join();
}

inline QString exportPath()
{
    return QCoreApplication::applicationDirPath() +
           QString("/record_%1_%2.txt").arg(Month.year()).arg(Month.month());
}

inline void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

struct RecordRig : DialogRig
{
    RecordRig()
        : DialogRig(makeDialog<AccessRecordDlg>)
    {
        find<QDateEdit>("dateEdit")->setDate(Month);
    }
};
