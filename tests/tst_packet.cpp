#include "link/packet.h"

#include <QtTest>

class TestPacket : public QObject
{
    Q_OBJECT

private slots:
    void writesWithinTheBuffer();
    void writesNothingAfterAnOverflow();
    void padsFields();
    void readsHead_data();
    void readsHead();
    void readsWithinTheReply();
};

namespace {

uint8_t *bytesOf(QByteArray &buffer)
{
    return reinterpret_cast<uint8_t *>(buffer.data());
}

} // namespace

// A value that does not fit is not written at all, and nothing is written behind the end.
void TestPacket::writesWithinTheBuffer()
{
    for (size_t capacity = 0; capacity <= 13; ++capacity) {
        const char *written = capacity < 6    ? ""
                              : capacity < 8  ? "01"
                              : capacity < 12 ? "010203"
                                              : "01020304050607";
        for (const bool asText : {false, true}) {
            QByteArray buffer(20, '\xAA');
            PacketWriter packet(bytesOf(buffer), capacity);
            packet.u8(0x01).u16(0x0203);
            asText ? packet.bytes("\x04\x05\x06\x07", 4) : packet.u32(0x04050607);
            QCOMPARE(packet.fits(), capacity >= 12);
            QCOMPARE(packet.size(), 5U + static_cast<uint32_t>(qstrlen(written) / 2));
            const QByteArray head(5, '\xAA');
            QCOMPARE(buffer, (head + QByteArray::fromHex(written)).leftJustified(20, '\xAA'));
        }
    }
}

void TestPacket::writesNothingAfterAnOverflow()
{
    QByteArray buffer(7, '\0');
    PacketWriter packet(bytesOf(buffer), 7);
    QVERIFY(!packet.u32(0xFFFFFFFF).u8(0xFF).bytes(nullptr, 0).fits());
    QVERIFY(!PacketWriter(bytesOf(buffer), 7).bytes("x", SIZE_MAX).fits());
    QCOMPARE(buffer, QByteArray(7, '\0'));
}

void TestPacket::padsFields()
{
    QByteArray buffer(14, '\xAA');
    PacketWriter packet(bytesOf(buffer), 13);
    packet.padded("ab", 2, 4).padded("cdef", 4, 2).padded(nullptr, 0, 1);
    QVERIFY(packet.fits());
    QCOMPARE(packet.size(), 12U);
    QVERIFY(!packet.padded("g", 1, 2).fits());
    QCOMPARE(buffer, QByteArray(5, '\xAA') + QByteArray::fromHex("61620000 6364 00 AAAA"));
}

void TestPacket::readsHead_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("declared");
    QTest::addColumn<int>("total");
    QTest::addColumn<int>("wholeUpTo");

    const auto row = [](const char *name, const char *bytes, int declared, int total, int whole) {
        QTest::newRow(name) << QByteArray::fromHex(bytes) << declared << total << whole;
    };
    row("nothing", "", 0, 0, -1);
    row("head-one-byte-short", "EAC5 FFFF", 0, 0, -1);
    row("declares-nothing-brings-more", "EAC5 000000 07 08", 0, 5, 0);
    row("whole", "EAC5 000002 00 61", 2, 7, 2);
    row("one-byte-missing", "EAC5 000003 00 61", 3, 8, -1);
    row("more-than-declared", "EAC5 000001 00 61", 1, 6, 1);
    row("byte-order", "EAC5 010203 00", 66051, 66056, -1);
}

void TestPacket::readsHead()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, wholeUpTo);
    const ReplyView view(reply);
    QTEST(int(view.declaredLength()), "declared");
    QTEST(int(view.declaredTotal()), "total");
    for (int length = 0; length < 5; ++length)
        QCOMPARE(view.isWhole(static_cast<uint32_t>(length)), length <= wholeUpTo);
}

void TestPacket::readsWithinTheReply()
{
    const QByteArray reply = QByteArray::fromHex("EAC5 000002 81 92");
    const ReplyView view(reply);
    QCOMPARE(int(view.u8(6)), 0x92);
    QCOMPARE(int(view.u16(5)), 0x8192);
    QCOMPARE(int(view.u8(7)), 0);
    QCOMPARE(int(view.u16(6)), 0);
    QCOMPARE(int(view.u16(SIZE_MAX)), 0);

    QByteArray out(3, '\xAA');
    QVERIFY(!view.copy(5, 3, bytesOf(out)));
    QVERIFY(!view.copy(8, 0, bytesOf(out)));
    QVERIFY(!view.copy(5, SIZE_MAX - 3, bytesOf(out)));
    QVERIFY(!view.copy(SIZE_MAX, 2, bytesOf(out)));
    QVERIFY(view.copy(7, 0, bytesOf(out)));
    QCOMPARE(out.toHex(), QByteArray("aaaaaa"));
    QVERIFY(view.copy(5, 2, bytesOf(out)));
    QCOMPARE(out.toHex(), QByteArray("8192aa"));
}

QTEST_GUILESS_MAIN(TestPacket)
#include "tst_packet.moc"
