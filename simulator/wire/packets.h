#pragma once

#include <QByteArray>
#include <QString>

namespace sim {

/// What a reply with a status byte says.
enum class Status : quint8 {
    Ok = 0,
    Busy = 1, ///< with an enrollment
    WrongParameter = 2,
    UserExists = 20,
    NoSuchUser = 21,
    Full = 22, ///< the users or, on import, a user's features
    EnrollmentFull = 24,
    QrCodesFull = 30,
    QrDataExists = 31,
    NoSuchQrCode = 32,
};

/// One request, its head already taken off.
struct Request
{
    quint8 code = 0;
    QByteArray payload;
};

/// Reads a request's payload from front to back, big-endian. What lies beyond the end reads as 0
/// and makes `complete()` false.
class PayloadReader
{
public:
    explicit PayloadReader(const QByteArray &payload)
        : m_rest(payload)
    {
    }

    quint8 u8() { return static_cast<quint8>(number(1)); }
    quint16 u16() { return static_cast<quint16>(number(2)); }
    quint32 u32() { return number(4); }
    QByteArray bytes(int count);
    /// A zero-padded text of that width; complete() turns false when it is not UTF-8.
    QString text(int width);

    /// True when everything read so far was there, and texts were texts.
    bool complete() const { return !m_bad; }
    /// True when, besides, nothing is left.
    bool exact() const { return !m_bad && m_rest.isEmpty(); }

private:
    quint32 number(int count);

    QByteArray m_rest;
    bool m_bad = false;
};

/// Big-endian bytes of a number.
QByteArray bytesOf16(quint16 value);

/// A text as fixed-width field: UTF-8 cut at a character's end, zero-padded; at least one zero
/// byte follows.
QByteArray textField(const QString &text, int width);

// Whole replies, head included.
QByteArray statusReply(Status status);
QByteArray dataReply(const QByteArray &payload); ///< status Ok, then the payload
QByteArray plainReply(const QByteArray &body);   ///< a body without a status byte
/// A plain reply whose body the caller fills in, from byte wire::HeadSize on.
QByteArray unfilledReply(size_t bodySize);

/// Cuts the requests out of a stream that arrives in pieces of any size.
class RequestSplitter
{
public:
    enum class Result { Request, NeedMore, Broken };

    void append(const QByteArray &piece);
    /// Broken: the stream does not carry requests (at this point); nothing more comes out of it.
    Result next(Request *request);

private:
    QByteArray m_buffer;
    int m_read = 0; ///< start of the first request not handed out yet
};

} // namespace sim
