#pragma once

#include "link/packet.h"
#include "link/wire.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QTcpSocket;
class QTextEdit;

/// The console's only channel to the terminal: one TCP connection, one request at a time, each
/// answered by one reply.
///
/// A command blocks its caller until the reply has arrived or the time-out has passed; timers,
/// sockets and painting go on meanwhile, user input waits. A command returns true only when the
/// reply arrived whole and was accepted. Otherwise its reason is already in the log (some commands
/// are silent on a time-out) and the outputs are untouched.
class CmdClient : public QObject
{
    Q_OBJECT

public:
    /// The log is borrowed and must outlive the commands.
    CmdClient(QTextEdit *infoText, QObject *parent);
    ~CmdClient() override;

    /// Blocks for at most 5 s, and the look-up of a name; an existing connection is taken down
    /// first (at most 3 s). A null host is an empty one.
    bool connectToDevice(const char *host, quint16 port);
    bool disconnectFromDevice();

    /// Whether a command is waiting for its reply right now.
    bool isWaiting() const { return waiting; }

    // Transport, used by the commands.
    /// Frames and sends the first `totalLength` bytes of the send buffer; 1 on success, else 0.
    int sendPacket(uint32_t totalLength);
    /// Waits for `expectedLength` bytes, at most `rounds` milliseconds and the time events take.
    bool waitAck(int expectedLength, int rounds);
    /// Waits for a reply as long as it declares itself, or for `capLength` bytes.
    bool waitReply(int capLength, int rounds);

    // Users.
    /// JSON text without a terminating zero.
    bool getUserList(uint8_t *out, uint32_t *outLen, size_t outCapacity);

    // Device and mode.
    /// Height of the palm over the sensor.
    bool getTofDistance(uint16_t *out);
    /// Where the terminal is to push its messages; first octet first.
    bool setDebugAddress(const uint8_t ip[4], uint16_t port);

    // Cameras; each output holds wire::FrameSize bytes.
    bool getPalmprintImage(uint8_t *out);
    bool getPalmVeinImage(uint8_t *out);
    bool getDualImages(uint8_t *palmprint, uint8_t *vein);

private slots:
    void connected();
    void disconnected();
    void bytesWritten(qint64 bytes);
    void readyRead();

private:
    /// How a command waits: for a length that the console knows, or for the one that the reply
    /// declares. A silent one leaves no line on a time-out.
    struct Wait
    {
        enum Kind { Ack, Reply } kind;
        size_t bytes;
        bool silent = false;
        int rounds = DefaultRounds;
    };

    /// What a command says of a status that refuses it, untranslated, in the context of this class.
    struct Refusal
    {
        enum Form { Plain, Decimal, Character };

        const char *text;
        Form statusForm = Plain; ///< how the status takes the place of the text's %1
    };

    PacketWriter request(wire::Command command);
    bool exchange(const PacketWriter &packet, const Wait &wait);
    bool accepted(const Refusal &refusal);
    /// Accepts a reply of status 0 whose first `skipped` bytes behind the head, status included,
    /// are followed by data that has arrived whole and fits; copies that data out.
    bool acceptedData(const Refusal &refusal, uint32_t skipped, uint8_t *out, uint32_t *outLen,
                      size_t capacity);
    bool refuse(const Refusal &refusal, quint8 status);

    bool getImage(wire::Command command, uint8_t *out);

    ReplyView reply() const { return ReplyView(recvBuffer); }
    void log(const QString &line);
    bool waitUntil(const std::function<bool()> &complete, int rounds);

    static constexpr int DefaultRounds = 1000;

    bool isConnected = false;
    QTcpSocket *socket;
    QTextEdit *infoText;
    std::unique_ptr<uint8_t[]> sendBuffer;
    QByteArray recvBuffer;
    bool waiting = false;
};
