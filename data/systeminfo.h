#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class CmdClient;

/// What a terminal says of itself; none where it does not, or where the value cannot be read.
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
/// None when the text is no document that can be walked.
std::optional<SystemInfo> readSystemInfo(const QByteArray &text);
