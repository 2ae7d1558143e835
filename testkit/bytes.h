#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// Parses hexadecimal digits; blanks between them are ignored.
QByteArray hex(const QByteArray &digits);
/// Returns `width` bytes, the most significant first. The number is not negative and fits.
QByteArray bigEndian(int number, int width);
/// Returns the first five bytes of a packet whose length field is `following`.
QByteArray head(int following);
/// Returns a whole reply of status 0 with this data.
QByteArray replyWith(const QByteArray &data);
/// Splits the bytes into pieces of one byte.
QList<QByteArray> bytewise(const QByteArray &bytes);

/// Returns the content of a file, or "no file" if it cannot be read.
QByteArray contentOf(const QString &path);
