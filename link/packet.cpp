#include "link/packet.h"

#include "link/wire.h"

#include <algorithm>
#include <cstring>

PacketWriter::PacketWriter(uint8_t *target, size_t targetCapacity, size_t offset)
    : buffer(target),
      capacity(targetCapacity),
      used(offset)
{
}

PacketWriter &PacketWriter::u8(uint8_t value)
{
    return bigEndian(value, 1);
}

PacketWriter &PacketWriter::u16(uint16_t value)
{
    return bigEndian(value, 2);
}

PacketWriter &PacketWriter::u32(uint32_t value)
{
    return bigEndian(value, 4);
}

PacketWriter &PacketWriter::bytes(const void *source, size_t length)
{
    fitting = fitting && used <= capacity && length <= capacity - used;
    if (fitting && length > 0) {
        std::memcpy(buffer + used, source, length);
        used += length;
    }
    return *this;
}

PacketWriter &PacketWriter::padded(const void *source, size_t length, size_t width)
{
    fitting = fitting && used <= capacity && width <= capacity - used;
    if (fitting) {
        std::memset(buffer + used, 0, width);
        bytes(source, std::min(length, width));
        used += width - std::min(length, width);
    }
    return *this;
}

PacketWriter &PacketWriter::bigEndian(uint32_t value, size_t width)
{
    uint8_t octets[4] = {};
    for (size_t i = 0; i < width; ++i)
        octets[i] = static_cast<uint8_t>(value >> (8 * (width - 1 - i)));
    return bytes(octets, width);
}

void writeHead(uint8_t *packet, uint32_t totalLength)
{
    PacketWriter head(packet, wire::HeadSize, 0);
    const uint32_t following = totalLength - static_cast<uint32_t>(wire::HeadSize);
    head.u8(wire::Magic0).u8(wire::Magic1).u8(static_cast<uint8_t>(following >> 16));
    head.u16(static_cast<uint16_t>(following));
}

ReplyView::ReplyView(const QByteArray &received)
    : data(reinterpret_cast<const uint8_t *>(received.constData())),
      count(static_cast<size_t>(received.size()))
{
}

uint32_t ReplyView::declaredLength() const
{
    return bigEndian(wire::LengthOffset, 3);
}

size_t ReplyView::declaredTotal() const
{
    return has(0, wire::HeadSize) ? wire::HeadSize + declaredLength() : 0;
}

bool ReplyView::isWhole(size_t length) const
{
    return has(0, wire::HeadSize) && declaredLength() >= length && declaredTotal() <= count;
}

uint8_t ReplyView::u8(size_t offset) const
{
    return static_cast<uint8_t>(bigEndian(offset, 1));
}

uint16_t ReplyView::u16(size_t offset) const
{
    return static_cast<uint16_t>(bigEndian(offset, 2));
}

uint32_t ReplyView::u32(size_t offset) const
{
    return bigEndian(offset, 4);
}

bool ReplyView::copy(size_t offset, size_t length, uint8_t *out) const
{
    if (!has(offset, length))
        return false;
    if (length > 0)
        std::memcpy(out, data + offset, length);
    return true;
}

uint32_t ReplyView::bigEndian(size_t offset, size_t width) const
{
    if (!has(offset, width))
        return 0;
    uint32_t value = 0;
    for (size_t i = 0; i < width; ++i)
        value = value << 8 | data[offset + i];
    return value;
}

bool ReplyView::has(size_t offset, size_t length) const
{
    return offset <= count && length <= count - offset;
}
