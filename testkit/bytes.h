#pragma once

#include <QByteArray>
#include <QList>

/// Bytes written as hexadecimal digits; blanks between them only group.
QByteArray hex(const char *digits);
/// A packet's head that declares `following` bytes behind it.
QByteArray head(int following);
/// Every byte as a piece of its own.
QList<QByteArray> bytewise(const QByteArray &bytes);
