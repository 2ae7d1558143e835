#pragma once

#include "link/wire.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

/// Builds one request in a borrowed buffer, beginning with the command code; the head is written
/// when the packet is sent. A value that would pass the end of the buffer is not written, not even
/// in part, and fits() returns false from then on.
class PacketWriter
{
public:
    PacketWriter(uint8_t *buffer, size_t capacity, size_t offset = wire::CodeOffset);

    PacketWriter &u8(uint8_t value);
    PacketWriter &u16(uint16_t value);
    PacketWriter &u32(uint32_t value);
    PacketWriter &bytes(const void *data, size_t length);
    /// Writes a field of `width` bytes: the data, cut to that width, then zeros.
    PacketWriter &padded(const void *data, size_t length, size_t width);

    bool fits() const { return fitting; }
    /// Length of the packet so far in bytes, including the head.
    uint32_t size() const { return static_cast<uint32_t>(used); }

private:
    PacketWriter &bigEndian(uint32_t value, size_t width);

    uint8_t *buffer;
    size_t capacity;
    size_t used;
    bool fitting = true;
};

/// Writes the head of a packet that is `totalLength` bytes long, including the head.
void writeHead(uint8_t *packet, uint32_t totalLength);

/// Read-only view of the bytes that have arrived of one reply, which it borrows. Every access is
/// bounded by these bytes, whatever length the peer declares.
class ReplyView
{
public:
    explicit ReplyView(const QByteArray &received);

    size_t received() const { return count; }
    /// Number of bytes behind the head, as the head declares it; 0 while the head is incomplete.
    uint32_t declaredLength() const;
    /// Declared length including the head; 0 while the head is incomplete.
    size_t declaredTotal() const;
    /// Returns whether the reply declares at least `length` bytes behind its head and has arrived
    /// completely.
    bool isWhole(size_t length) const;

    /// The unsigned integer at an offset; 0 if bytes are missing.
    uint8_t u8(size_t offset) const;
    uint16_t u16(size_t offset) const;
    uint32_t u32(size_t offset) const;

    /// Copies `length` bytes from `offset`. Returns false and copies nothing if fewer have arrived.
    bool copy(size_t offset, size_t length, uint8_t *out) const;

private:
    uint32_t bigEndian(size_t offset, size_t width) const;
    bool has(size_t offset, size_t length) const;

    const uint8_t *data;
    size_t count;
};
