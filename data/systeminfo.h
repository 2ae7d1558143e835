#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class CmdClient;

/// System information of a terminal. A member is empty if the document does not contain it or the
/// value cannot be read.
struct SystemInfo
{
    std::optional<QString> name;
    std::optional<QString> serial;
    std::optional<QString> firmwareVersion;
    std::optional<QString> veinAlgorithmVersion;
    std::optional<QString> printAlgorithmVersion;
    std::optional<QString> qrCodeAlgorithmVersion;
    std::optional<quint32> maxUsers;
    std::optional<quint32> maxRecords;
    std::optional<QString> macAddress;
};

bool fetchSystemInfo(CmdClient *client, QByteArray *text);
/// Returns nothing if the text is not a JSON object.
std::optional<SystemInfo> readSystemInfo(const QByteArray &text);
