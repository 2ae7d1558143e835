#include "tests/matrix/manners.h"

#include <QStringList>

namespace {

constexpr int Head = 5;
constexpr int UserListCapacity = 819200;
constexpr int PageCapacity = 409600;
constexpr int DocumentCapacity = 3076;

const char Told[] = "Fail to accept ACK.";
const char Silent[] = "";

const char Unknown[] = "* Unknown error.";
const char UnknownNumber[] = "* Unknown error: %d";
const char Deletion[] = "1 The device is processing tasks, the deletion is failed.|"
                        "21 User doesn't exist.|2 Wrong parameter.|* Unknown error.";

int at(const QByteArray &bytes, int index)
{
    return index < bytes.size() ? static_cast<quint8>(bytes.at(index)) : 0;
}

int declared(const QByteArray &reply)
{
    return at(reply, 2) << 16 | at(reply, 3) << 8 | at(reply, 4);
}

QByteArray littleEndian(int value, int width)
{
    QByteArray bytes;
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

QByteArray nothing(const QByteArray & /*reply*/)
{
    return {};
}

QByteArray number(const QByteArray &reply)
{
    return littleEndian(at(reply, 5) << 8 | at(reply, 6), 2);
}

QByteArray bias(const QByteArray &reply)
{
    return littleEndian((at(reply, 5) << 8 | at(reply, 6)) - 1000, 4);
}

QByteArray mode(const QByteArray &reply)
{
    return reply.mid(5, 1);
}

QByteArray clock(const QByteArray &reply)
{
    return reply.mid(5, 6);
}

QByteArray frame(const QByteArray &reply)
{
    return reply.mid(5, 388800);
}

/// The palm vein's goes in front.
QByteArray bothFrames(const QByteArray &reply)
{
    return reply.mid(388805, 388800) + reply.mid(5, 388800);
}

QByteArray text(const QByteArray &reply)
{
    return reply.mid(6, declared(reply) - 1);
}

int recordBytes(const QByteArray &reply)
{
    return 100 * (at(reply, 6) << 8 | at(reply, 7));
}

QByteArray records(const QByteArray &reply)
{
    return reply.mid(8, recordBytes(reply));
}

QByteArray pair(const QByteArray &reply)
{
    return reply.mid(6, 777600);
}

QByteArray features(const QByteArray &reply)
{
    return reply.mid(6, 10240);
}

QByteArray id(const QByteArray &reply)
{
    return littleEndian(at(reply, 6) << 24 | at(reply, 7) << 16 | at(reply, 8) << 8 | at(reply, 9),
                        4);
}

Manner ack(const char *name, const char *onSilence, const char *onStatus)
{
    return {name, Manner::Known, 6, 1000, Manner::ByStatus, 0, 6, onSilence, onStatus, nothing};
}

Manner value(const char *name, int bytes, int fixed, QByteArray (*result)(const QByteArray &))
{
    return {name, Manner::Known, bytes, 1000, Manner::Always, 0, fixed, Silent, "", result};
}

Manner images(const char *name, int bytes, QByteArray (*result)(const QByteArray &))
{
    return {name, Manner::Known, bytes, 1000, Manner::Frame, 0, 5, Silent, "* ", result};
}

Manner document(const char *name)
{
    return {name, Manner::Declared, 2500, 1000, Manner::Text, DocumentCapacity, 6,
            Told, Unknown,          text};
}

Manner block(const char *name, int size, int fixed, const char *onStatus,
             QByteArray (*result)(const QByteArray &))
{
    return {name, Manner::Declared, 6 + size, 1000, Manner::Block, size, fixed,
            Told, onStatus,         result};
}

} // namespace

bool Manner::isComplete(const QByteArray &arrived) const
{
    const bool byHead =
        wait == Declared && arrived.size() >= Head && arrived.size() >= Head + declared(arrived);
    return byHead || arrived.size() >= bytes;
}

bool Manner::isLong() const
{
    return fixed < bytes;
}

Verdict Manner::timedOut() const
{
    return {false, QString::fromUtf8(onSilence), {}};
}

Verdict Manner::judge(const QByteArray &arrived) const
{
    const bool hasStatus = rule == ByStatus || (rule != Frame && declared(arrived) > 0);
    const auto status = static_cast<quint8>(hasStatus ? at(arrived, 5) : 0);
    if (rule != Always && (status != 0 || !holds(arrived)))
        return {false, refusal(status), {}};
    QString lines;
    if (rule == Page || qstrcmp(name, "getUserList") == 0)
        lines = QStringLiteral("The loaded data count：%1").arg(declared(arrived));
    return {true, lines, result(arrived)};
}

bool Manner::holds(const QByteArray &arrived) const
{
    const int length = declared(arrived);
    const bool whole = arrived.size() >= Head + length;
    switch (rule) {
    case Always:
    case ByStatus:
        return true;
    case Text:
        return whole && length >= 1 && length - 1 <= capacity;
    case Page:
        return whole && length >= 3 && length - 3 <= capacity && recordBytes(arrived) <= length - 3;
    case Block:
        return length == 1 + capacity;
    case Frame:
        return length == bytes - Head;
    case AtLeast:
        return length > 0 && arrived.size() >= 6 + capacity;
    }
    return false;
}

QString Manner::refusal(quint8 status) const
{
    const QStringList rows = QString::fromUtf8(onStatus).split('|');
    for (const QString &row : rows) {
        const QString key = row.section(' ', 0, 0);
        if (key != "*" && key != QString::number(status))
            continue;
        return row.section(' ', 1)
            .replace("%d", QString::number(status))
            .replace("%s", QString::number(static_cast<qint8>(status)))
            .replace("%c", QChar::fromLatin1(static_cast<char>(status)));
    }
    return {};
}

const std::vector<Manner> &manners()
{
    static const std::vector<Manner> all = {
        ack("startEnroll", Silent,
            "2 Wrong parameter.|1 The device is busy.|21 User ID doesn't exist.|"
            "24 The current user feature buffer is full.|* Device prompts failed：%s"),
        ack("startRemoteEnroll", Silent,
            "2 Wrong parameter.|1 The device is busy.|* Device prompts failed：%s"),
        ack("clearUsers", Silent, "* Fail to clear users：%c"),
        {"getUserList", Manner::Declared, 800000, 1000, Manner::Text, UserListCapacity, 6, Told,
         UnknownNumber, text},
        block("getRemoteEnrollImages", 777600, 6, "2 Wrong parameter.|* Unknown error.", pair),
        block("getRemoteFeatures", 10240, 6, "2 Wrong parameter.|* Unknown error.", features),
        ack("importUserFeatures", Told,
            "1 The device is processing tasks, the deletion is failed.|21 User doesn't exist.|"
            "2 Wrong parameter.|22 The user feature buffer is full.|* Unknown error."),
        ack("addUser", Told,
            "1 The system is busy.|20 User ID exists.|22 The user database is full.|"
            "* Unknown error: %d"),
        ack("deleteUser", Told, Deletion),
        {"getEmptyUserId", Manner::Declared, 10, 1000, Manner::AtLeast, 4, 10, Told,
         "1 The system is busy.|22 The user database is full.|* unknown error.", id},
        ack("deleteUserFeatures", Told, Deletion),
        value("getTofDistance", 7, 7, number),
        ack("setMode", Silent, "* Mode set failed: %c"),
        value("getMode", 6, 6, mode),
        value("getRtcTime", 11, 11, clock),
        ack("setRtcTime", Silent, "* Fail to set RTC time：%c"),
        ack("setDebugAddress", Silent, "* Fail to set Debug address：%c"),
        ack("setTofBias", Silent, "* Fail to set TOF correct value：%c"),
        value("getTofBias", 7, 7, bias),
        ack("setSerialNumber", Told, "* Unknown error:%d"),
        ack("rebootDevice", Told, "* Fail to reboot the system：%c"),
        ack("setUserConfig", Told, Unknown),
        document("getUserConfig"),
        document("getSystemInfo"),
        document("getVendorConfig"),
        ack("setVendorConfig", Told, Unknown),
        document("getOutputConfig"),
        ack("setOutputConfig", Told, Unknown),
        document("getRecordFileList"),
        {"getQrCodeList", Manner::Declared, 614400, 2000, Manner::Text, UserListCapacity, 6, Told,
         Unknown, text},
        images("getPalmprintImage", 388805, frame),
        images("getPalmVeinImage", 388805, frame),
        images("getDualImages", 777605, bothFrames),
        ack("deleteMonthRecords", Told, Unknown),
        ack("clearRecords", Told, Unknown),
        {"getMonthRecords", Manner::Declared, 320000, 1000, Manner::Page, PageCapacity, 8, Told,
         UnknownNumber, records},
        ack("addQrCode", Told,
            "30 The QR code database is full.|31 Duplicate QR code data.|2 Wrong parameter.|"
            "* Unknown error."),
        ack("clearQrCodes", Told, Unknown),
        ack("deleteQrCodeByRemark", Told,
            "2 Wrong parameter.|32 QR code doesn't exist.|* Unknown error."),
        ack("deleteQrCodeByData", Told,
            "2 Wrong parameter.|32 QR code doesn't exist.|* unknown error."),
    };
    return all;
}
