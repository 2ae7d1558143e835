#pragma once

#include <QTcpServer>

class QTcpSocket;

/// Stands between a client and a server on this machine, passes on what they say and keeps it.
class Recorder : public QObject
{
    Q_OBJECT

public:
    /// Passes on to a port of 127.0.0.1.
    explicit Recorder(quint16 serverPort);

    quint16 port() const { return listener.serverPort(); }

    /// What both have said since the last call.
    QByteArray takeRequest();
    QByteArray takeReply();

private slots:
    void takeConnection();
    void passRequest();
    void passReply();

private:
    quint16 target;
    QTcpServer listener;
    QTcpSocket *client = nullptr; ///< owned by the listener
    QTcpSocket *server = nullptr; ///< child
    QByteArray request;
    QByteArray reply;
};
