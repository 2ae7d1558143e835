#include "tests/simclient.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QJsonDocument>
#include <QtTest>

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QByteArray request(int code, const QByteArray &payload)
{
    QByteArray bytes = hex("EAC5000000 00") + payload;
    bytes[3] = static_cast<char>((1 + payload.size()) >> 8);
    bytes[4] = static_cast<char>(1 + payload.size());
    bytes[5] = static_cast<char>(code);
    return bytes;
}

QByteArray addUser(const char *numbers, const QByteArray &name)
{
    return request(0x30, hex(numbers) + name.leftJustified(64, '\0'));
}

QByteArray addCode(const QByteArray &note, const char *times, const QByteArray &data)
{
    return request(0x60, note.leftJustified(32, '\0') + hex(times) + data.leftJustified(512, '\0'));
}

QByteArray monthBytes(int year, int month)
{
    const char bytes[] = {static_cast<char>(year >> 8), static_cast<char>(year),
                          static_cast<char>(month)};
    return {bytes, sizeof bytes};
}

QByteArray status(int code)
{
    return hex("EAC5000001") + static_cast<char>(code);
}

quint8 at(const QByteArray &bytes, int index)
{
    return static_cast<quint8>(bytes.at(index));
}

SimTerminal::SimTerminal(const sim::TerminalOptions &options)
    : sim::Terminal(options)
{
    if (!listen(QHostAddress::LocalHost, 0))
        qFatal("The terminal cannot listen.");
}

SimClient::SimClient(const sim::Terminal &terminal)
{
    connectToHost(QHostAddress::LocalHost, terminal.port());
}

void SimClient::send(const QByteArray &bytes)
{
    QTRY_COMPARE(state(), ConnectedState);
    write(bytes);
}

QByteArray SimClient::take(int size)
{
    QElapsedTimer timer;
    timer.start();
    pending += readAll();
    while (pending.size() < size && !closed() && timer.elapsed() < 10000) {
        QTest::qWait(1);
        pending += readAll();
    }
    QByteArray taken = pending.left(size);
    pending.remove(0, size);
    return taken;
}

QByteArray SimClient::reply()
{
    const QByteArray head = take(5);
    return head.size() < 5 ? QByteArray()
                           : head + take(at(head, 2) << 16 | at(head, 3) << 8 | at(head, 4));
}

QByteArray SimClient::ask(const QByteArray &request)
{
    send(request);
    return reply();
}

QJsonObject SimClient::askJson(const char *request)
{
    return QJsonDocument::fromJson(ask(hex(request)).mid(6)).object();
}
