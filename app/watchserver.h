#pragma once

#include <QList>
#include <QObject>

class QTcpServer;
class QTcpSocket;
class QTextEdit;

/// Receives the text messages that the terminal pushes, from one peer at a time; a second one is
/// closed at once. Messages are UTF-8 without framing: what one read brings is one log entry.
class WatchServer : public QObject
{
    Q_OBJECT

public:
    /// The log is borrowed.
    WatchServer(QTextEdit *log, QObject *parent);

    /// Listens on every IPv4 address of this machine. A port that cannot be had is not reported.
    void startListen(quint16 port);
    void stopListen();

    /// This machine's address on the /24 network of a dotted-quad host, first octet first. On
    /// false `out` holds the last IPv4 address examined, or is untouched if none was.
    static bool findLocalAddress(quint8 out[4], const QString &deviceHost);

    /// The log entry for what one read has brought.
    static QString entry(const QByteArray &batch);

public slots:
    void newConnAct();
    void dataReadyAct();
    void disconnAct();

private:
    void accept(QTcpSocket *socket);

    QTextEdit *log;
    QTcpServer *server;
    bool listening = false;
    qint32 connectionCount = 0; ///< accepted and not yet reported disconnected
    QList<QTcpSocket *> connections;
};
