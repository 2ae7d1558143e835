#pragma once

#include "simulator/terminal.h"
#include "testkit/bytes.h"

#include <QTcpSocket>
#include <QtTest>

/// Returns the bytes of hexadecimal digits and texts; 'text':64 is zero-padded to 64 bytes. Line
/// breaks and the blanks behind them do not count.
inline QByteArray bytesOf(QString notation)
{
    static const QRegularExpression lineBreak("\n *");
    static const QRegularExpression field("'([^']*)'(?::([0-9]+))?");
    notation.remove(lineBreak);
    for (auto found = field.match(notation); found.hasMatch(); found = field.match(notation)) {
        const QByteArray text = found.captured(1).toUtf8();
        notation.replace(found.capturedStart(), found.capturedLength(),
                         text.leftJustified(found.captured(2).toInt(), '\0').toHex());
    }
    return QByteArray::fromHex(notation.toLatin1());
}

/// A console that knows nothing but the head of a packet.
class SimClient : public QTcpSocket
{
public:
    /// A terminal that does not listen yet gets a free port.
    explicit SimClient(sim::Terminal &terminal)
    {
        if (terminal.port() == 0)
            terminal.listen(QHostAddress::LocalHost, 0);
        connectToHost(QHostAddress::LocalHost, terminal.port());
        waitForConnected();
    }

    /// Returns the next `size` bytes; fewer if the connection ended or no more came in time.
    QByteArray take(int size)
    {
        const QDeadlineTimer limit(10000);
        while (bytesAvailable() < size && state() == ConnectedState && !limit.hasExpired())
            QTest::qWait(1);
        return read(size);
    }

    /// Sends a request, written for bytesOf() without its head, and returns the reply without its
    /// head; nothing if it is not whole or its head is wrong.
    QByteArray ask(const QString &request)
    {
        const QByteArray body = bytesOf(request);
        write(head(body.size()) + body);
        const QByteArray start = take(5);
        const QByteArray reply = take(start.mid(2).toHex().toInt(nullptr, 16));
        return start == head(reply.size()) ? reply : QByteArray();
    }
};
