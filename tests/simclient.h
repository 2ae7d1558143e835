#pragma once

#include "simulator/terminal.h"

#include <QByteArray>
#include <QJsonObject>
#include <QTcpSocket>

QByteArray hex(const char *text);

/// The whole request; 1 + payload.size() fits 16 bits.
QByteArray request(int code, const QByteArray &payload);

QByteArray addUser(const char *numbers, const QByteArray &name);
QByteArray addCode(const QByteArray &note, const char *times, const QByteArray &data);
/// A month's year and number as in a request.
QByteArray monthBytes(int year, int month);

/// A reply of one byte: a status, or the mode.
QByteArray status(int code);

/// The byte at an index, without sign.
quint8 at(const QByteArray &bytes, int index);

/// A simulated terminal that listens on a free port.
class SimTerminal : public sim::Terminal
{
public:
    explicit SimTerminal(const sim::TerminalOptions &options = {});
};

/// A console that knows nothing but the length in a reply's head.
class SimClient : public QTcpSocket
{
public:
    explicit SimClient(const sim::Terminal &terminal);

    void send(const QByteArray &bytes);
    /// The next `size` bytes; fewer when the connection ended or no more came in time.
    QByteArray take(int size);
    /// The next whole reply; empty when none came in time.
    QByteArray reply();
    QByteArray ask(const QByteArray &request);
    /// The document in the reply to a request in hex digits.
    QJsonObject askJson(const char *request);

    bool closed() const { return state() == UnconnectedState; }

private:
    QByteArray pending;
};
