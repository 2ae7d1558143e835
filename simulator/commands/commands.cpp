#include "simulator/commands/commands.h"

#include "simulator/state/device.h"

#include <algorithm>

namespace sim {
namespace {

/// For what must not happen while a person is being enrolled.
template <Answer answer> QByteArray unlessEnrolling(Device &device, const Request &request)
{
    return device.enrolling() ? statusReply(Status::Busy) : answer(device, request);
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
    {wire::Command::ClearUsers, ReplyForm::Status, "clearUsers", unlessEnrolling<clearUsers>},
    {wire::Command::GetUserList, ReplyForm::Status, "getUserList", getUserList},
    {wire::Command::SetUserConfig, ReplyForm::Status, "setUserConfig", setUserConfig},
    {wire::Command::GetUserConfig, ReplyForm::Status, "getUserConfig", getUserConfig},
    {wire::Command::GetSystemInfo, ReplyForm::Status, "getSystemInfo", getSystemInfo},
    {wire::Command::GetVendorConfig, ReplyForm::Status, "getVendorConfig", getVendorConfig},
    {wire::Command::SetVendorConfig, ReplyForm::Status, "setVendorConfig", setVendorConfig},
    {wire::Command::GetOutputConfig, ReplyForm::Status, "getOutputConfig", getOutputConfig},
    {wire::Command::SetOutputConfig, ReplyForm::Status, "setOutputConfig", setOutputConfig},
    {wire::Command::GetRemoteEnrollImages, ReplyForm::Status, "getRemoteEnrollImages",
     getRemoteEnrollImages},
    {wire::Command::GetRemoteFeatures, ReplyForm::Status, "getRemoteFeatures", getRemoteFeatures},
    {wire::Command::ImportUserFeatures, ReplyForm::Status, "importUserFeatures",
     unlessEnrolling<importUserFeatures>},
    {wire::Command::AddUser, ReplyForm::Status, "addUser", unlessEnrolling<addUser>},
    {wire::Command::DeleteUser, ReplyForm::Status, "deleteUser", unlessEnrolling<deleteUser>},
    {wire::Command::GetEmptyUserId, ReplyForm::Status, "getEmptyUserId",
     unlessEnrolling<getEmptyUserId>},
    {wire::Command::DeleteUserFeatures, ReplyForm::Status, "deleteUserFeatures",
     unlessEnrolling<deleteUserFeatures>},
    {wire::Command::GetRecordFileList, ReplyForm::Status, "getRecordFileList", getRecordFileList},
    {wire::Command::DeleteMonthRecords, ReplyForm::Status, "deleteMonthRecords",
     deleteMonthRecords},
    {wire::Command::ClearRecords, ReplyForm::Status, "clearRecords", clearRecords},
    {wire::Command::GetMonthRecords, ReplyForm::Status, "getMonthRecords", getMonthRecords},
    {wire::Command::SetSerialNumber, ReplyForm::Status, "setSerialNumber", setSerialNumber},
    {wire::Command::AddQrCode, ReplyForm::Status, "addQrCode", addQrCode},
    {wire::Command::ClearQrCodes, ReplyForm::Status, "clearQrCodes", clearQrCodes},
    {wire::Command::DeleteQrCode, ReplyForm::Status, "deleteQrCode", deleteQrCode},
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
