#include "simulator/wire/packets.h"

#include "link/wire.h"

#include <algorithm>

namespace sim {
namespace {

constexpr int HeadSize = static_cast<int>(wire::HeadSize);
constexpr int LongestBody = static_cast<int>(wire::SendCapacity) - HeadSize;
constexpr char Magic[] = {static_cast<char>(wire::Magic0), static_cast<char>(wire::Magic1)};

} // namespace

QByteArray PayloadReader::bytes(int count)
{
    failed = failed || rest.size() < count;
    if (failed)
        return QByteArray(count, '\0');
    QByteArray taken = rest.left(count);
    rest.remove(0, count);
    return taken;
}

QString PayloadReader::text(int width)
{
    const QByteArray field = bytes(width);
    const QByteArray encoded(field.constData(),
                             static_cast<int>(qstrnlen(field.constData(), uint(width))));
    QString decoded = QString::fromUtf8(encoded);
    failed = failed || decoded.toUtf8() != encoded;
    return decoded;
}

QByteArray textField(const QString &text, int width)
{
    QByteArray bytes = text.toUtf8();
    for (QString fitting = text; bytes.size() >= width; bytes = fitting.toUtf8())
        fitting.chop(fitting.at(fitting.size() - 1).isLowSurrogate() ? 2 : 1);
    return bytes.leftJustified(width, '\0');
}

QByteArray unfilledReply(int bodySize)
{
    QByteArray packet(HeadSize + bodySize, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(bodySize), packet.data() + wire::LengthOffset - 1);
    std::copy(std::begin(Magic), std::end(Magic), packet.begin());
    return packet;
}

QByteArray plainReply(const QByteArray &body)
{
    QByteArray packet = unfilledReply(body.size());
    std::copy(body.begin(), body.end(), packet.begin() + HeadSize);
    return packet;
}

QByteArray dataReply(const QByteArray &payload)
{
    return plainReply(static_cast<char>(Status::Ok) + payload);
}

QByteArray statusReply(Status status)
{
    return plainReply(QByteArray(1, static_cast<char>(status)));
}

Arrival takeRequest(QIODevice &stream, Request *request)
{
    const QByteArray head = stream.peek(HeadSize);
    const int checked = std::min(head.size(), static_cast<int>(sizeof Magic));
    if (!std::equal(Magic, Magic + checked, head.begin()))
        return Arrival::Broken; // as soon as the wrong byte is there
    if (head.size() < HeadSize)
        return Arrival::Incomplete;
    // The length has 24 bits; the byte ahead of them is the last magic byte.
    const char *field = head.constData() + wire::LengthOffset;
    const int length = static_cast<int>(qFromBigEndian<quint32>(field - 1) & 0xFFFFFFU);
    if (length == 0 || length > LongestBody)
        return Arrival::Broken;
    if (stream.bytesAvailable() < HeadSize + length)
        return Arrival::Incomplete;
    const QByteArray packet = stream.read(HeadSize + length);
    request->code = static_cast<quint8>(packet.at(static_cast<int>(wire::CodeOffset)));
    request->payload = packet.mid(static_cast<int>(wire::PayloadOffset));
    return Arrival::Whole;
}

} // namespace sim
