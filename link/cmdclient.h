#pragma once

#include "link/connection.h"

#include <QAbstractSocket>
#include <QObject>
#include <QString>

#include <memory>

class ClientHost;
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
    CmdClient(std::unique_ptr<ClientHost> host, QObject *parent);
    /// A client of a window: its lines go to the log, which is borrowed and must outlive the
    /// commands. Part of the library of the widgets.
    CmdClient(QTextEdit *infoText, QObject *parent);
    ~CmdClient() override;

    /// Waits at most 5 s, including the look-up of a name; an existing connection is closed first
    /// (at most 3 s). A null host is an empty one.
    bool connectToDevice(const char *host, quint16 port);
    bool disconnectFromDevice();
    /// Makes sure that no late reply can be taken for that of the next request: connects anew,
    /// without a line, unless each request on the connection got one whole reply and nothing more
    /// arrives within `settleTime` milliseconds. To be called before each request of a sequence
    /// whose replies make one result. Returns false when the terminal has closed the connection or
    /// refuses a new one. When the terminal does not answer within 5 s, the result is true, the
    /// next request fails, and the next call tries again.
    bool resynchronize(int settleTime = 0);
    /// Reports that the last reply was that of an earlier request, so that its own is still to
    /// come.
    void distrustReply() { connection.distrustReply(); }
    /// Whether the connection stands right now; no longer when the terminal has ended it.
    bool hasConnection() const { return connection.isConnected(); }

    QAbstractSocket::SocketState socketState() const;
    /// How long the last reply that came whole took, in microseconds; -1 before the first.
    qint64 lastReplyTime() const { return connection.lastReplyTime(); }

    /// Whether a command is waiting for its reply right now.
    bool isWaiting() const { return connection.isWaiting(); }

    // Transport, used by the commands.
    /// Frames and sends the first `totalLength` bytes of the send buffer; 1 on success, else 0.
    int sendPacket(uint32_t totalLength);
    /// Waits for `expectedLength` bytes, at most `rounds` milliseconds and the time events take.
    bool waitAck(int expectedLength, int rounds);
    /// Waits for a reply as long as it declares itself, or for `capLength` bytes.
    bool waitReply(int capLength, int rounds);

    // Users. IDs are the terminal's, not checked here.
    bool startEnroll(uint32_t userId);
    bool startRemoteEnroll(uint32_t userId);
    bool clearUsers();
    /// JSON text without a terminating zero, as in every command that gives a text.
    bool getUserList(uint8_t *out, uint32_t *outLen, size_t outCapacity);
    /// One of the five image pairs of a remote enrollment, index 0 to 4: two frames in a row.
    bool getRemoteEnrollImages(uint8_t *out, size_t capacity, uint32_t userId, uint8_t index);
    /// wire::FeatureSize bytes.
    bool getRemoteFeatures(uint8_t *out, size_t capacity, uint32_t userId);
    bool importUserFeatures(uint32_t userId, uint8_t kind, const uint8_t *data, uint32_t length);
    bool addUser(const UserRecord *user);
    bool deleteUser(uint32_t userId);
    bool getEmptyUserId(uint32_t *out);
    bool deleteUserFeatures(uint32_t userId);

    // Device and mode.
    /// Height of the palm over the sensor.
    bool getTofDistance(uint16_t *out);
    bool setMode(uint8_t mode);
    bool getMode(uint8_t *out);
    bool getRtcTime(ClockRecord *out);
    bool setRtcTime(const ClockRecord *time);
    /// Where the terminal is to push its messages; first octet first.
    bool setDebugAddress(const uint8_t ip[4], uint16_t port);
    bool setTofBias(int16_t bias);
    bool getTofBias(int32_t *out);
    /// The first wire::SerialNumberSize bytes; a shorter text is filled up with zeros.
    bool setSerialNumber(const char *serial, uint32_t length);
    bool rebootDevice();

    // Documents; those that are set must leave room for a packet's head.
    bool getUserConfig(char *out, uint32_t *outLen, size_t capacity);
    bool setUserConfig(const char *json, uint32_t length);
    bool getVendorConfig(char *out, uint32_t *outLen, size_t capacity);
    bool setVendorConfig(const char *json, uint32_t length);
    bool getOutputConfig(char *out, uint32_t *outLen, size_t capacity);
    bool setOutputConfig(const char *json, uint32_t length);
    /// `out` holds DocumentCapacity bytes.
    bool getSystemInfo(char *out, uint32_t *outLen);

    /// Room enough for any document that the terminal sends.
    static constexpr size_t DocumentCapacity = 3076;

    // Cameras; each output holds wire::FrameSize bytes.
    bool getPalmprintImage(uint8_t *out);
    bool getPalmVeinImage(uint8_t *out);
    bool getDualImages(uint8_t *palmprint, uint8_t *vein);

    // Access records.
    bool getRecordFileList(char *out, uint32_t *outLen, size_t capacity);
    bool deleteMonthRecords(uint16_t year, uint8_t month);
    bool clearRecords();
    /// One page of a month's records from `startIndex` on; `outCount` records of wire::RecordSize.
    /// Waits `rounds` milliseconds for it.
    bool getMonthRecords(uint16_t year, uint8_t month, uint8_t *out, size_t capacity,
                         uint32_t startIndex, uint32_t *outCount, int rounds = TimeOutRounds);

    // QR codes. Keys end with a zero; those longer than wire::QrKeySize are refused unsent.
    bool addQrCode(const QrEntry *entry);
    bool clearQrCodes();
    bool deleteQrCodeByRemark(const char *text);
    bool deleteQrCodeByData(const char *text);
    bool getQrCodeList(char *out, uint32_t *outLen, size_t capacity);

private slots:
    void connected();
    void disconnected();
    void bytesWritten(qint64 bytes);
    void readyRead();

private:
    PacketWriter request(wire::Command command) { return connection.request(command); }
    bool exchange(const PacketWriter &packet, const Wait &wait);
    /// An exchange that brings nothing but a status. `texts` is a table as StatusText tells.
    bool command(const PacketWriter &packet, const Wait &wait, const StatusText *texts);
    /// An exchange that brings a text.
    bool getText(wire::Command command, const Wait &wait, const StatusText *texts, char *out,
                 uint32_t *outLen, size_t capacity);

    /// Judges a reply of known length by its status alone: what its head declares has no say.
    bool accepted(const StatusText *texts);
    /// Accepts a reply of status 0 whose first `skipped` bytes behind the head, status included,
    /// are followed by data, `atLeast` bytes or more, that has arrived whole and fits; copies that
    /// data out.
    bool acceptedData(const StatusText *texts, uint32_t skipped, uint8_t *out, uint32_t *outLen,
                      size_t capacity, size_t atLeast = 0);
    /// Accepts a reply of status 0 that declares and has brought exactly `length` bytes of data,
    /// which fit; copies them out.
    bool acceptedBlock(const StatusText *texts, size_t length, uint8_t *out, size_t capacity);
    bool refuse(const StatusText *texts, quint8 status);

    bool enroll(DeviceMode mode, uint32_t userId, const StatusText *texts);
    /// An exchange whose reply has `size` bytes of a value and no status.
    bool getValue(wire::Command command, size_t size);
    bool getDocument(wire::Command command, char *out, uint32_t *outLen, size_t capacity);
    bool setDocument(wire::Command code, const char *json, uint32_t length);
    bool deleteQrCode(uint8_t selector, const char *text, const QString &tooLong,
                      const StatusText *texts);
    /// The status; 0 where the reply declares no bytes at all and so has none.
    quint8 declaredStatus() const;

    bool getImage(wire::Command command, uint8_t *out);

    ReplyView reply() const { return connection.reply(); }
    void log(const QString &line);

    bool isConnected = false;
    std::unique_ptr<ClientHost> host;
    Connection connection;
};
