#include "testkit/bytes.h"

#include <QFile>

QByteArray hex(const QByteArray &digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray head(int following)
{
    QByteArray bytes = hex("EAC5");
    for (const int shift : {16, 8, 0})
        bytes.append(static_cast<char>(following >> shift));
    return bytes;
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
