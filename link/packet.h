#pragma once

#include "link/wire.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

/// Builds one request in a borrowed buffer, from the command code on; the head before it is
/// written when the packet is sent. What would pass the buffer's end is not written at all, not
/// even in part, and fits() is false from then on.
class PacketWriter
{
public:
    PacketWriter(uint8_t *buffer, size_t capacity, size_t offset = wire::CodeOffset);

    PacketWriter &u8(uint8_t value);
    PacketWriter &u16(uint16_t value);
    PacketWriter &u32(uint32_t value);
    PacketWriter &bytes(const void *data, size_t length);
    /// A field of `width` bytes: the first bytes of the data, as far as they go, then zeros.
    PacketWriter &padded(const void *data, size_t length, size_t width);

    bool fits() const { return fitting; }
    /// The whole packet's length so far in bytes, head included.
    uint32_t size() const { return static_cast<uint32_t>(used); }

private:
    PacketWriter &bigEndian(uint32_t value, size_t width);

    uint8_t *buffer;
    size_t capacity;
    size_t used;
    bool fitting = true;
};

/// Writes the head of a packet that is `totalLength` bytes long, head included.
void writeHead(uint8_t *packet, uint32_t totalLength);

/// Read-only view of what has arrived of one reply. The length that the peer declares is a claim:
/// every access is bounded by the bytes that are there. Borrows the bytes.
class ReplyView
{
public:
    explicit ReplyView(const QByteArray &received);

    size_t received() const { return count; }
    /// Number of bytes that the head says follow it; 0 while the head is incomplete.
    uint32_t declaredLength() const;
    /// Length of the whole reply by its head; 0 while the head is incomplete.
    size_t declaredTotal() const;
    /// Whether the reply declares `length` bytes or more behind its head and all that it declares
    /// has arrived.
    bool isWhole(size_t length) const;

    /// The unsigned integer at an offset, 0 where bytes are missing.
    uint8_t u8(size_t offset) const;
    uint16_t u16(size_t offset) const;
    uint32_t u32(size_t offset) const;

    /// Copies `length` bytes from `offset`; false, and nothing copied, when fewer have arrived.
    bool copy(size_t offset, size_t length, uint8_t *out) const;

private:
    uint32_t bigEndian(size_t offset, size_t width) const;
    bool has(size_t offset, size_t length) const;

    const uint8_t *data;
    size_t count;
};
