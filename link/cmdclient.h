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
/// A command blocks its caller until the reply has arrived or the timeout has passed. In a window,
/// timers, sockets and painting go on meanwhile, and user input waits. A command returns true only
/// if the reply arrived whole and was accepted. Otherwise it returns false, the reason is already
/// in the log (some commands log nothing on a timeout), and the outputs are unchanged.
class CmdClient : public QObject
{
    Q_OBJECT

public:
    CmdClient(std::unique_ptr<ClientHost> host, QObject *parent);
    /// Creates the client of a window, whose lines go to the log. The log is borrowed and must
    /// outlive the client's last command. Defined in the library of the widgets.
    CmdClient(QTextEdit *infoText, QObject *parent);
    ~CmdClient() override;

    /// Closes an existing connection (in at most 3 s) and connects (in at most 5 s, including the
    /// lookup of a host name). A null host counts as an empty one.
    bool connectToDevice(const char *host, quint16 port);
    bool disconnectFromDevice();
    /// Ensures that a late reply cannot be taken for the reply to the next request. Call it before
    /// each request of a sequence whose replies make one result. It connects again, without a line
    /// in the log, unless every request on this connection got exactly one whole reply and nothing
    /// more arrives within `settleTime` milliseconds. Returns false if the terminal has closed the
    /// connection or refuses a new one. If the terminal does not answer within 5 s, it returns
    /// true, the next request fails, and the next call tries again.
    bool resynchronize(int settleTime = 0);
    /// Marks the last reply as the reply to an earlier request, so that its own is still to come.
    void distrustReply() { connection.distrustReply(); }
    /// Returns whether the socket is connected now; false as soon as the terminal has closed it.
    bool hasConnection() const { return connection.isConnected(); }

    QAbstractSocket::SocketState socketState() const;
    /// Returns the time that the last complete reply took, in microseconds; -1 before the first.
    qint64 lastReplyTime() const { return connection.lastReplyTime(); }

    /// Returns whether a command is waiting for its reply now.
    bool isWaiting() const { return connection.isWaiting(); }

    // Transport, used by the commands.
    /// Writes the head and sends the first `totalLength` bytes of the send buffer. Returns 1 on
    /// success, else 0.
    int sendPacket(uint32_t totalLength);
    /// Waits for `expectedLength` bytes, for at most `rounds` rounds of a millisecond.
    bool waitAck(int expectedLength, int rounds);
    /// Waits for a reply of the length that its head declares, or for `capLength` bytes.
    bool waitReply(int capLength, int rounds);

    // Users. The terminal checks the IDs.
    bool startEnroll(uint32_t userId);
    bool startRemoteEnroll(uint32_t userId);
    bool clearUsers();
    /// Fetches JSON text; like all texts here it has no terminating zero.
    bool getUserList(uint8_t *out, uint32_t *outLen, size_t outCapacity);
    /// Fetches one of the five image pairs of a remote enrollment, index 0 to 4: two frames, one
    /// behind the other.
    bool getRemoteEnrollImages(uint8_t *out, size_t capacity, uint32_t userId, uint8_t index);
    /// Fetches wire::FeatureSize bytes.
    bool getRemoteFeatures(uint8_t *out, size_t capacity, uint32_t userId);
    bool importUserFeatures(uint32_t userId, uint8_t kind, const uint8_t *data, uint32_t length);
    bool addUser(const UserRecord *user);
    bool deleteUser(uint32_t userId);
    bool getEmptyUserId(uint32_t *out);
    bool deleteUserFeatures(uint32_t userId);

    // Device and mode.
    /// Fetches the height of the palm over the sensor, in millimetres.
    bool getTofDistance(uint16_t *out);
    bool setMode(uint8_t mode);
    bool getMode(uint8_t *out);
    bool getRtcTime(ClockRecord *out);
    bool setRtcTime(const ClockRecord *time);
    /// Sets the address to which the terminal pushes its messages; first octet first.
    bool setDebugAddress(const uint8_t ip[4], uint16_t port);
    bool setTofBias(int16_t bias);
    bool getTofBias(int32_t *out);
    /// Sends the first wire::SerialNumberSize bytes; a shorter text is padded with zeros.
    bool setSerialNumber(const char *serial, uint32_t length);
    bool rebootDevice();

    // Documents. One that is sent must fit into a packet behind the head.
    bool getUserConfig(char *out, uint32_t *outLen, size_t capacity);
    bool setUserConfig(const char *json, uint32_t length);
    bool getVendorConfig(char *out, uint32_t *outLen, size_t capacity);
    bool setVendorConfig(const char *json, uint32_t length);
    bool getOutputConfig(char *out, uint32_t *outLen, size_t capacity);
    bool setOutputConfig(const char *json, uint32_t length);
    /// `out` holds DocumentCapacity bytes.
    bool getSystemInfo(char *out, uint32_t *outLen);

    /// Buffer size that holds any document of the terminal, in bytes.
    static constexpr size_t DocumentCapacity = 3076;

    // Cameras; each output holds wire::FrameSize bytes.
    bool getPalmprintImage(uint8_t *out);
    bool getPalmVeinImage(uint8_t *out);
    bool getDualImages(uint8_t *palmprint, uint8_t *vein);

    // Access records.
    bool getRecordFileList(char *out, uint32_t *outLen, size_t capacity);
    bool deleteMonthRecords(uint16_t year, uint8_t month);
    bool clearRecords();
    /// Fetches one page of a month's records from `startIndex` on: `outCount` records of
    /// wire::RecordSize bytes. The timeout is `rounds` milliseconds.
    bool getMonthRecords(uint16_t year, uint8_t month, uint8_t *out, size_t capacity,
                         uint32_t startIndex, uint32_t *outCount, int rounds = TimeOutRounds);

    // QR codes. Keys end with a zero; one longer than wire::QrKeySize is refused and not sent.
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
    /// Sends a request whose reply has a status only. `texts` is a table of StatusText.
    bool command(const PacketWriter &packet, const Wait &wait, const StatusText *texts);
    /// Sends a request whose reply has a text.
    bool getText(wire::Command command, const Wait &wait, const StatusText *texts, char *out,
                 uint32_t *outLen, size_t capacity);

    /// Accepts a reply of known length if its status is 0; the length in its head does not matter.
    bool accepted(const StatusText *texts);
    /// Accepts a reply of status 0 whose data begins `skipped` bytes behind the head, status
    /// included, has at least `atLeast` bytes, has arrived whole and fits; copies the data.
    bool acceptedData(const StatusText *texts, uint32_t skipped, uint8_t *out, uint32_t *outLen,
                      size_t capacity, size_t atLeast = 0);
    /// Accepts a reply of status 0 that declares exactly `length` bytes of data, all of which have
    /// arrived and fit; copies them.
    bool acceptedBlock(const StatusText *texts, size_t length, uint8_t *out, size_t capacity);
    bool refuse(const StatusText *texts, quint8 status);

    bool enroll(DeviceMode mode, uint32_t userId, const StatusText *texts);
    /// Sends a request whose reply has a value of `size` bytes and no status.
    bool getValue(wire::Command command, size_t size);
    bool getDocument(wire::Command command, char *out, uint32_t *outLen, size_t capacity);
    bool setDocument(wire::Command code, const char *json, uint32_t length);
    bool deleteQrCode(uint8_t selector, const char *text, const QString &tooLong,
                      const StatusText *texts);
    /// Returns the status; 0 if the reply declares no bytes at all and so has none.
    quint8 declaredStatus() const;

    bool getImage(wire::Command command, uint8_t *out);

    ReplyView reply() const { return connection.reply(); }
    void log(const QString &line);

    bool isConnected = false;
    std::unique_ptr<ClientHost> host;
    Connection connection;
};
