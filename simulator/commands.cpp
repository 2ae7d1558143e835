#include "simulator/commands.h"

#include <algorithm>

namespace sim {
namespace {

/// For commands that this terminal knows and does not carry out.
QByteArray refuse(Device & /*device*/, const Request & /*request*/)
{
    return statusReply(Status::WrongParameter);
}

constexpr Command Commands[] = {
    {wire::Command::GetTofDistance, ReplyForm::Plain, "getTofDistance", getTofDistance},
    {wire::Command::GetPalmprintImage, ReplyForm::Plain, "getPalmprintImage", getPalmprintImage},
    {wire::Command::GetPalmVeinImage, ReplyForm::Plain, "getPalmVeinImage", getPalmVeinImage},
    {wire::Command::GetDualImages, ReplyForm::Plain, "getDualImages", getDualImages},
    {wire::Command::SetMode, ReplyForm::Status, "setMode", setMode},
    {wire::Command::GetMode, ReplyForm::Plain, "getMode", getMode},
    {wire::Command::GetRtcTime, ReplyForm::Plain, "getRtcTime", getRtcTime},
    {wire::Command::SetRtcTime, ReplyForm::Status, "setRtcTime", setRtcTime},
    {wire::Command::SetDebugAddress, ReplyForm::Status, "setDebugAddress", setDebugAddress},
    {wire::Command::SetTofBias, ReplyForm::Status, "setTofBias", setTofBias},
    {wire::Command::GetTofBias, ReplyForm::Plain, "getTofBias", getTofBias},
    {wire::Command::ClearUsers, ReplyForm::Status, "clearUsers", clearUsers},
    {wire::Command::GetUserList, ReplyForm::Status, "getUserList", getUserList},
    {wire::Command::SetUserConfig, ReplyForm::Status, "setUserConfig", setUserConfig},
    {wire::Command::GetUserConfig, ReplyForm::Status, "getUserConfig", getUserConfig},
    {wire::Command::GetSystemInfo, ReplyForm::Status, "getSystemInfo", getSystemInfo},
    {wire::Command::GetVendorConfig, ReplyForm::Status, "getVendorConfig", getVendorConfig},
    {wire::Command::SetVendorConfig, ReplyForm::Status, "setVendorConfig", setVendorConfig},
    {wire::Command::GetOutputConfig, ReplyForm::Status, "getOutputConfig", getOutputConfig},
    {wire::Command::SetOutputConfig, ReplyForm::Status, "setOutputConfig", setOutputConfig},
    {wire::Command::GetRemoteEnrollImages, ReplyForm::Status, "getRemoteEnrollImages", refuse},
    {wire::Command::GetRemoteFeatures, ReplyForm::Status, "getRemoteFeatures", refuse},
    {wire::Command::ImportUserFeatures, ReplyForm::Status, "importUserFeatures", refuse},
    {wire::Command::AddUser, ReplyForm::Status, "addUser", refuse},
    {wire::Command::DeleteUser, ReplyForm::Status, "deleteUser", refuse},
    {wire::Command::GetEmptyUserId, ReplyForm::Status, "getEmptyUserId", getEmptyUserId},
    {wire::Command::DeleteUserFeatures, ReplyForm::Status, "deleteUserFeatures", refuse},
    {wire::Command::GetRecordFileList, ReplyForm::Status, "getRecordFileList", getRecordFileList},
    {wire::Command::DeleteMonthRecords, ReplyForm::Status, "deleteMonthRecords", refuse},
    {wire::Command::ClearRecords, ReplyForm::Status, "clearRecords", clearRecords},
    {wire::Command::GetMonthRecords, ReplyForm::Status, "getMonthRecords", getMonthRecords},
    {wire::Command::SetSerialNumber, ReplyForm::Status, "setSerialNumber", setSerialNumber},
    {wire::Command::AddQrCode, ReplyForm::Status, "addQrCode", refuse},
    {wire::Command::ClearQrCodes, ReplyForm::Status, "clearQrCodes", clearQrCodes},
    {wire::Command::DeleteQrCode, ReplyForm::Status, "deleteQrCode", refuse},
    {wire::Command::GetQrCodeList, ReplyForm::Status, "getQrCodeList", getQrCodeList},
    {wire::Command::Reboot, ReplyForm::Status, "rebootDevice", rebootDevice},
};

} // namespace

const Command *findCommand(quint8 code)
{
    const auto *found =
        std::find_if(std::begin(Commands), std::end(Commands), [&](const Command &command) {
            return static_cast<quint8>(command.code) == code;
        });
    return found == std::end(Commands) ? nullptr : found;
}

} // namespace sim
