#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QTcpSocket>

QByteArray hex(const char *text);

/// The whole request; 1 + payload.size() fits 16 bits.
QByteArray request(int code, const QByteArray &payload);

/// A reply of one byte: a status, or the mode.
QByteArray status(int code);

/// The byte at an index, without sign.
quint8 at(const QByteArray &bytes, int index);

/// A console that knows nothing but the length in a reply's head.
class SimClient
{
public:
    explicit SimClient(quint16 port);

    void send(const QByteArray &bytes);
    /// The next whole reply; empty when none came in time.
    QByteArray reply();
    QByteArray ask(const QByteArray &request);
    /// The document in the reply to a request in hex digits.
    QJsonObject askJson(const char *request);

    bool closed() const { return m_socket.state() == QAbstractSocket::UnconnectedState; }
    QTcpSocket &socket() { return m_socket; }

private:
    QTcpSocket m_socket;
    QByteArray m_bytes;
};
