#pragma once

#include "simulator/wire/packets.h"

#include "link/wire.h"

namespace sim {

class Device;

/// What a command's reply carries behind its head.
enum class ReplyForm : quint8 {
    Status, ///< a status byte, then data if there are any
    Plain,  ///< data at once; such a command cannot be refused
};

using Answer = QByteArray (*)(Device &, const Request &); ///< gives the reply, head included

struct Command
{
    wire::Command code;
    ReplyForm form;
    const char *name;
    Answer answer;
};

/// nullptr when there is no such command.
const Command *findCommand(quint8 code);

// The answers, by family. Users:
QByteArray clearUsers(Device &, const Request &);
QByteArray getUserList(Device &, const Request &);
QByteArray getEmptyUserId(Device &, const Request &);
QByteArray addUser(Device &, const Request &);
QByteArray deleteUser(Device &, const Request &);
QByteArray deleteUserFeatures(Device &, const Request &);
QByteArray importUserFeatures(Device &, const Request &);
// Mode and enrollment:
QByteArray setMode(Device &, const Request &);
QByteArray getMode(Device &, const Request &);
QByteArray getRemoteEnrollImages(Device &, const Request &);
QByteArray getRemoteFeatures(Device &, const Request &);
// Device:
QByteArray getTofDistance(Device &, const Request &);
QByteArray getRtcTime(Device &, const Request &);
QByteArray setRtcTime(Device &, const Request &);
QByteArray setDebugAddress(Device &, const Request &);
QByteArray setTofBias(Device &, const Request &);
QByteArray getTofBias(Device &, const Request &);
QByteArray setUserConfig(Device &, const Request &);
QByteArray getUserConfig(Device &, const Request &);
QByteArray getSystemInfo(Device &, const Request &);
QByteArray getVendorConfig(Device &, const Request &);
QByteArray setVendorConfig(Device &, const Request &);
QByteArray getOutputConfig(Device &, const Request &);
QByteArray setOutputConfig(Device &, const Request &);
QByteArray setSerialNumber(Device &, const Request &);
QByteArray rebootDevice(Device &, const Request &);
// Images:
QByteArray getPalmprintImage(Device &, const Request &);
QByteArray getPalmVeinImage(Device &, const Request &);
QByteArray getDualImages(Device &, const Request &);
// Access records:
QByteArray getRecordFileList(Device &, const Request &);
QByteArray deleteMonthRecords(Device &, const Request &);
QByteArray clearRecords(Device &, const Request &);
QByteArray getMonthRecords(Device &, const Request &);
// QR codes:
QByteArray addQrCode(Device &, const Request &);
QByteArray deleteQrCode(Device &, const Request &);
QByteArray clearQrCodes(Device &, const Request &);
QByteArray getQrCodeList(Device &, const Request &);

} // namespace sim
