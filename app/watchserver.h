#pragma once

#include <QList>
#include <QObject>
#include <QTimer>

class QTcpServer;
class QTcpSocket;
class QTextEdit;

/// Receives the text messages that the terminal pushes. One peer is served at a time; a second
/// connection is closed at once. Messages are UTF-8 without framing: the bytes of one read make one
/// log entry. A flood is read in small pieces with pauses between them, so that it takes only a
/// fraction of the window's time.
class WatchServer : public QObject
{
    Q_OBJECT

public:
    /// The log is borrowed.
    WatchServer(QTextEdit *log, QObject *parent);

    /// Listens on every IPv4 address of this machine. Does not report a port that is in use.
    void startListen(quint16 port);
    void stopListen();

    /// Finds this machine's address on the /24 network of a dotted-quad host, first octet first. If
    /// it returns false, `out` holds the last IPv4 address examined, or is unchanged if there was
    /// none.
    static bool findLocalAddress(quint8 out[4], const QString &deviceHost);

    /// Returns the log entry for the bytes of one read.
    static QString entry(const QByteArray &batch);

public slots:
    void newConnAct();
    void dataReadyAct();
    void disconnAct();

private:
    void accept(QTcpSocket *socket);
    /// Reads and shows the remaining bytes of a connection that ends.
    void showRest();
    void show(const QByteArray &batch);

    QTextEdit *log;
    QTcpServer *server;
    bool listening = false;
    qint32 connectionCount = 0; ///< accepted, and no disconnect reported yet
    QList<QTcpSocket *> connections;
    QByteArray split; ///< first bytes of a character that the next read completes
    QTimer pause;     ///< active while reading pauses
};
