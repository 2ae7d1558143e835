#pragma once

#include "data/listdocument.h"

class CmdClient;

/// A QR code as the terminal lists it, its times in the terminal's own form. What the list leaves
/// out is an empty text.
struct QrCode
{
    QString remark;
    QString start;
    QString end;
    QString data;
};

bool fetchQrCodeList(CmdClient *client, QByteArray *text);
std::optional<ListDocument<QrCode>> readQrCodes(const QByteArray &text);
