#pragma once

#include "data/listdocument.h"

class CmdClient;

/// A QR code in the terminal's list, with times in the terminal's own format. A text that the list
/// does not contain is empty.
struct QrCode
{
    QString remark;
    QString start;
    QString end;
    QString data;
};

bool fetchQrCodeList(CmdClient *client, QByteArray *text);
std::optional<ListDocument<QrCode>> readQrCodes(const QByteArray &text);
