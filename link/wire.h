#pragma once

#include <QtGlobal>

#include <cstddef>

/// The terminal's work mode, as the byte on the wire.
enum class DeviceMode : quint8 {
    Idle = 0,
    Enroll = 1,
    LocalRecognition = 3,
    RemoteRecognition = 4,
    RemoteEnroll = 6,
};

/// A local time of the terminal's clock, in the byte order of the wire.
struct ClockRecord
{
    quint8 year; ///< since 1970
    quint8 month;
    quint8 day;
    quint8 hour;
    quint8 minute;
    quint8 second;
};

/// A user as it is sent to the terminal. Texts are UTF-8, padded with zeros; a text that fills its
/// field has no zero.
struct UserRecord
{
    quint32 userId;
    quint32 cardNumber; ///< 0: none
    char name[32];
    char department[32];
};

/// A QR code that is valid from its start to its end time. Texts are as in UserRecord. Times have
/// one byte each for century, year of the century, month, day, hour, minute and second.
struct QrEntry
{
    char data[512];
    char remark[32];
    quint8 startTime[7];
    quint8 endTime[7];
};

/// The user IDs that an operator can give.
constexpr int MinUserId = 1;
constexpr int MaxUserId = 65536;

/// The packet format shared by console and terminal. Offsets count from a packet's first byte;
/// integers are unsigned and big-endian.
namespace wire {

// Head: two magic bytes, then the number of bytes that follow the head, in 24 bits.
constexpr quint8 Magic0 = 0xEA;
constexpr quint8 Magic1 = 0xC5;
constexpr size_t LengthOffset = 2;
constexpr size_t HeadSize = 5;

// Behind the head: a request's command code or a reply's status, then the payload.
constexpr size_t CodeOffset = 5;
constexpr size_t StatusOffset = 5;
constexpr size_t PayloadOffset = 6;
constexpr size_t AckSize = 6;

/// Longest request that the console can send, head included.
constexpr size_t SendCapacity = 65536;
/// Maximum length of a user list, the longest of all replies.
constexpr size_t MaxUserListReply = 800000;

// Camera frames: 8-bit grey, rows top to bottom without padding.
constexpr int FrameWidth = 540;
constexpr int FrameHeight = 720;
constexpr size_t FrameSize = size_t{FrameWidth} * FrameHeight;

/// Size of a block of palm features, in bytes.
constexpr size_t FeatureSize = 10240;

/// Size of an access record, in bytes, and maximum number of records in a page.
constexpr size_t RecordSize = 100;
constexpr size_t RecordsPerPage = 3000;

constexpr size_t SerialNumberSize = 15;
/// Longest remark or data by which a QR code can be deleted.
constexpr size_t QrKeySize = 32;

/// Added to the distance sensor's bias on the wire, which has no negative numbers.
constexpr int TofBiasOffset = 1000;

constexpr quint8 StatusOk = 0;

enum class Command : quint8 {
    GetTofDistance = 0x00,
    GetPalmprintImage = 0x01,
    GetPalmVeinImage = 0x02,
    GetDualImages = 0x03,
    SetMode = 0x04,
    GetMode = 0x05,
    GetRtcTime = 0x06,
    SetRtcTime = 0x07,
    SetDebugAddress = 0x08,
    SetTofBias = 0x0A,
    GetTofBias = 0x0B,
    ClearUsers = 0x0E,
    GetUserList = 0x10,
    SetUserConfig = 0x15,
    GetUserConfig = 0x16,
    GetSystemInfo = 0x17,
    GetVendorConfig = 0x18,
    SetVendorConfig = 0x19,
    GetOutputConfig = 0x1A,
    SetOutputConfig = 0x1B,
    GetRemoteEnrollImages = 0x27,
    GetRemoteFeatures = 0x28,
    ImportUserFeatures = 0x2A,
    AddUser = 0x30,
    DeleteUser = 0x31,
    GetEmptyUserId = 0x33,
    DeleteUserFeatures = 0x34,
    GetRecordFileList = 0x40,
    DeleteMonthRecords = 0x41,
    ClearRecords = 0x42,
    GetMonthRecords = 0x43,
    SetSerialNumber = 0x50,
    AddQrCode = 0x60,
    ClearQrCodes = 0x61,
    DeleteQrCode = 0x62,
    GetQrCodeList = 0x63,
    Reboot = 0xEF,
};

} // namespace wire
