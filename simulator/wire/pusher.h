#pragma once

#include <QHostAddress>
#include <QRandomGenerator>
#include <QTcpSocket>
#include <QTimer>

namespace sim {

class Device;

// Messages that a terminal pushes; lines without prefix and line end.
QString greetingLine(const Device &device);
/// Returns recognitions and passages in the recognition modes only.
QString chatLine(const Device &device, QRandomGenerator &random);

/// Pushes messages to the address that a console announced: a greeting, a line at every interval
/// and each event. Retries at the interval while nobody listens there; events of that time are not
/// pushed later.
class Pusher : public QObject
{
    Q_OBJECT
public:
    /// A `usedPort` other than 0 replaces the announced one. `simulated` must outlive this object.
    Pusher(const Device &simulated, quint16 usedPort, int intervalMs, quint32 seed);

public slots:
    /// Leaves the previous address, unless it is the same and the connection stands. The address
    /// 0.0.0.0 or the port 0 ends the messages.
    void setTarget(const QHostAddress &announced, quint16 announcedPort);
    /// Disconnects; resume() connects to the same address again.
    void pause();
    void resume();
    /// Pushes the line if there is a connection whose peer reads.
    void say(const QString &line);

private slots:
    void greet();
    void tick();
    void discardInput();

private:
    const Device &device;
    QRandomGenerator random;
    QTcpSocket socket;
    QTimer timer;
    QHostAddress address;
    quint16 port = 0;
    quint16 fixedPort;
};

} // namespace sim
