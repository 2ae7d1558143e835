#pragma once

#include <QList>
#include <QObject>
#include <QTimer>

class QTcpServer;
class QTcpSocket;
class QTextEdit;

/// Receives the text messages that the terminal pushes, from one peer at a time; a second one is
/// closed at once. Messages are UTF-8 without framing: what one read brings is one log entry. A
/// flood is read in small pieces with pauses, so that it takes a fraction of the time at most.
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
    /// Shows what is still unread of a connection that ends.
    void showRest();
    void show(const QByteArray &batch);

    QTextEdit *log;
    QTcpServer *server;
    bool listening = false;
    qint32 connectionCount = 0; ///< accepted and not yet reported disconnected
    QList<QTcpSocket *> connections;
    QByteArray split; ///< beginning of a character whose rest comes with the next read
    QTimer pause;     ///< active while nothing is read
};
