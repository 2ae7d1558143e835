#include "data/qrcodes.h"

#include "data/fetchtext.h"

namespace {

constexpr size_t Capacity = 819200;

QrCode readQrCode(const Json::Value &code)
{
    const auto text = [&code](const char *key) {
        return json::text(code, key).value_or(QString());
    };
    return {text("name"), text("st"), text("et"), text("QR")};
}

} // namespace

bool fetchQrCodeList(CmdClient *client, QByteArray *text)
{
    return fetchText(client, &CmdClient::getQrCodeList, Capacity, text);
}

std::optional<ListDocument<QrCode>> readQrCodes(const QByteArray &text)
{
    return readList(text, "qrcode data", readQrCode);
}
