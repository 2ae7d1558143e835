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

QByteArray status(int code)
{
    return hex("EAC5000001") + static_cast<char>(code);
}

quint8 at(const QByteArray &bytes, int index)
{
    return static_cast<quint8>(bytes.at(index));
}

SimClient::SimClient(quint16 port)
{
    m_socket.connectToHost(QHostAddress::LocalHost, port);
}

void SimClient::send(const QByteArray &bytes)
{
    QTRY_COMPARE(m_socket.state(), QAbstractSocket::ConnectedState);
    m_socket.write(bytes);
}

QByteArray SimClient::reply()
{
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 5000; QTest::qWait(1)) {
        m_bytes += m_socket.readAll();
        const int size = m_bytes.size() < 5
                             ? 0
                             : 5 + (at(m_bytes, 2) << 16 | at(m_bytes, 3) << 8 | at(m_bytes, 4));
        if (size > 0 && m_bytes.size() >= size) {
            QByteArray taken = m_bytes.left(size);
            m_bytes.remove(0, size);
            return taken;
        }
    }
    return {};
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
