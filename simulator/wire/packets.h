#pragma once

#include <QIODevice>
#include <QtEndian>

namespace sim {

/// The status byte of a reply.
enum class Status : quint8 {
    Ok = 0,
    Busy = 1, ///< with an enrollment
    WrongParameter = 2,
    UserExists = 20,
    NoSuchUser = 21,
    Full = 22, ///< the user database or, on import, the features of a user
    EnrollmentFull = 24,
    QrCodesFull = 30,
    QrDataExists = 31,
    NoSuchQrCode = 32,
};

/// One request without its head.
struct Request
{
    quint8 code = 0;
    QByteArray payload;
};

/// Reads a request's payload from front to back, big-endian. Bytes beyond the end read as 0 and
/// make exact() false.
class PayloadReader
{
public:
    explicit PayloadReader(const QByteArray &payload)
        : rest(payload)
    {
    }

    quint8 u8() { return number<quint8>(); }
    quint16 u16() { return number<quint16>(); }
    quint32 u32() { return number<quint32>(); }
    QByteArray bytes(int count);
    /// Reads a zero-padded text of that width; exact() turns false when it is not UTF-8.
    QString text(int width);
    /// Reads all bytes that are left.
    QByteArray remainder() { return bytes(rest.size()); }

    /// Returns true when the payload held exactly what was read, and every text was UTF-8.
    bool exact() const { return !failed && rest.isEmpty(); }

private:
    template <class Number> Number number()
    {
        return qFromBigEndian<Number>(bytes(sizeof(Number)).constData());
    }

    QByteArray rest;
    bool failed = false;
};

/// Returns the big-endian bytes of an unsigned number, as many as its type has.
template <class Number> QByteArray bytesOf(Number value)
{
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

/// Returns a text as a zero-padded field of that width: UTF-8, cut at the end of a character, with
/// at least one zero byte.
QByteArray textField(const QString &text, int width);

// Whole replies, head included.
QByteArray statusReply(Status status);
QByteArray dataReply(const QByteArray &payload); ///< status Ok, then the payload
QByteArray plainReply(const QByteArray &body);   ///< a body without a status byte
/// Returns a plain reply whose body, from byte wire::HeadSize on, the caller fills in.
QByteArray unfilledReply(int bodySize);

enum class Arrival { Whole, Incomplete, Broken };

/// Takes the next request from a stream as soon as it has arrived. Broken: the stream carries no
/// request at this point, and nothing is taken.
Arrival takeRequest(QIODevice &stream, Request *request);

} // namespace sim
