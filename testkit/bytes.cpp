#include "testkit/bytes.h"

#include <QFile>

QByteArray hex(const QByteArray &digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray bigEndian(int number, int width)
{
    return QByteArray::fromHex(QByteArray::number(number, 16).rightJustified(2 * width, '0'));
}

QByteArray head(int following)
{
    return hex("EAC5") + bigEndian(following, 3);
}

QByteArray replyWith(const QByteArray &data)
{
    return head(data.size() + 1) + '\0' + data;
}

QList<QByteArray> bytewise(const QByteArray &bytes)
{
    QList<QByteArray> pieces;
    for (const char byte : bytes)
        pieces.append(QByteArray(1, byte));
    return pieces;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "no file";
}
