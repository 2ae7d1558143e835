#include "simulator/wire/packets.h"

#include "link/wire.h"

#include <QString>

namespace sim {
namespace {

constexpr int HeadSize = static_cast<int>(wire::HeadSize);
constexpr quint32 LongestBody = wire::SendCapacity - wire::HeadSize;

quint8 byteAt(const QByteArray &bytes, int index)
{
    return static_cast<quint8>(bytes.at(index));
}

void writeHead(QByteArray &packet, size_t bodySize)
{
    const quint8 head[] = {wire::Magic0, wire::Magic1, static_cast<quint8>(bodySize >> 16U),
                           static_cast<quint8>(bodySize >> 8U), static_cast<quint8>(bodySize)};
    for (int i = 0; i < HeadSize; ++i)
        packet[i] = static_cast<char>(head[i]);
}

/// Judges as soon as the wrong byte is there.
bool startsWrong(const QByteArray &buffer, int at, int available)
{
    return (available > 0 && byteAt(buffer, at) != wire::Magic0) ||
           (available > 1 && byteAt(buffer, at + 1) != wire::Magic1);
}

quint32 declaredLength(const QByteArray &buffer, int at)
{
    const int field = at + static_cast<int>(wire::LengthOffset);
    return static_cast<quint32>(byteAt(buffer, field) << 16 | byteAt(buffer, field + 1) << 8 |
                                byteAt(buffer, field + 2));
}

} // namespace

QByteArray PayloadReader::bytes(int count)
{
    m_bad = m_bad || m_rest.size() < count;
    if (m_bad)
        return QByteArray(count, '\0');
    QByteArray taken = m_rest.left(count);
    m_rest.remove(0, count);
    return taken;
}

QString PayloadReader::text(int width)
{
    const QByteArray field = bytes(width);
    const QByteArray encoded =
        field.left(static_cast<int>(qstrnlen(field.constData(), uint(width))));
    QString decoded = QString::fromUtf8(encoded);
    m_bad = m_bad || decoded.toUtf8() != encoded;
    return decoded;
}

quint32 PayloadReader::number(int count)
{
    quint32 value = 0;
    const QByteArray taken = bytes(count);
    for (const char byte : taken)
        value = value << 8U | static_cast<quint8>(byte);
    return value;
}

QByteArray bytesOf16(quint16 value)
{
    QByteArray bytes(2, '\0');
    bytes[0] = static_cast<char>(value >> 8U);
    bytes[1] = static_cast<char>(value & 0xFFU);
    return bytes;
}

QByteArray textField(const QString &text, int width)
{
    QByteArray bytes = text.toUtf8();
    for (QString fitting = text; bytes.size() >= width; bytes = fitting.toUtf8())
        fitting.chop(fitting.at(fitting.size() - 1).isLowSurrogate() ? 2 : 1);
    bytes.append(width - bytes.size(), '\0');
    return bytes;
}

QByteArray unfilledReply(size_t bodySize)
{
    QByteArray packet(static_cast<int>(wire::HeadSize + bodySize), Qt::Uninitialized);
    writeHead(packet, bodySize);
    return packet;
}

QByteArray plainReply(const QByteArray &body)
{
    QByteArray packet(HeadSize, Qt::Uninitialized);
    writeHead(packet, static_cast<size_t>(body.size()));
    return packet + body;
}

QByteArray dataReply(const QByteArray &payload)
{
    return plainReply(QByteArray(1, static_cast<char>(Status::Ok)) + payload);
}

QByteArray statusReply(Status status)
{
    return plainReply(QByteArray(1, static_cast<char>(status)));
}

void RequestSplitter::append(const QByteArray &piece)
{
    m_buffer.remove(0, m_read);
    m_read = 0;
    m_buffer += piece;
}

RequestSplitter::Result RequestSplitter::next(Request *request)
{
    const int available = m_buffer.size() - m_read;
    if (startsWrong(m_buffer, m_read, available))
        return Result::Broken;
    if (available < HeadSize)
        return Result::NeedMore;
    const quint32 length = declaredLength(m_buffer, m_read);
    if (length == 0 || length > LongestBody)
        return Result::Broken;
    if (available < HeadSize + static_cast<int>(length))
        return Result::NeedMore;
    request->code = byteAt(m_buffer, m_read + static_cast<int>(wire::CodeOffset));
    request->payload =
        m_buffer.mid(m_read + static_cast<int>(wire::PayloadOffset), static_cast<int>(length) - 1);
    m_read += HeadSize + static_cast<int>(length);
    return Result::Request;
}

} // namespace sim
