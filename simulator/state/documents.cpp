#include "simulator/state/documents.h"

#include "simulator/state/records.h"

#include <QString>

namespace sim {

Json::Value factoryOutputDocument()
{
    Json::Value document;
    Json::Value &data = document["data block"];
    data["sys mode"] = 0;
    data["sys http version"] = 0;
    data["remote ip"] = "192.168.31.100";
    data["remote port"] = 18080;

    Json::Value &recognition = document["recg info block"];
    recognition["palm recg mode"] = 2;
    recognition["fake detect"] = 1;
    recognition["max palm fail cnt"] = 15;
    recognition["detect similar hand"] = 0;
    recognition["use card"] = 1;
    recognition["card forward type"] = 1;
    recognition["use qrcode"] = 1;
    recognition["qrcode server ip"] = "192.168.31.101";
    recognition["qrcode server port"] = 18081;
    recognition["qrcode forward type"] = 1;

    Json::Value &output = document["cfg output block"];
    output["record upload func"] = 1;
    output["record server ip"] = "192.168.31.102";
    output["record server port"] = 18082;
    output["record server protocal"] = 1;
    output["rs485 output res func"] = 0;
    output["rs485 output type"] = 0;
    output["relay output func"] = 1;
    output["wegen output func"] = 1;
    output["weigen type"] = 1;
    output["weigen content"] = 0;
    return document;
}

Json::Value factoryUserDocument()
{
    Json::Value document;
    document["recg mode"] = 2;
    document["use qrcode"] = 1;
    document["local ip"] = "192.168.31.5";
    document["local port"] = 20086;
    document["gateway ip"] = "192.168.31.1";
    document["remote ip"] = "192.168.31.100";
    document["remote port"] = 18080;
    document["user dev type"] = 0;
    document["auto reboot"] = 1;
    document["auto reboot time"] = 270;
    document["detect similar hand"] = 0;
    return document;
}

Json::Value factoryVendorDocument()
{
    Json::Value document;
    Json::Value &info = document["dev info"];
    info["manufacture name"] = "Kovant";
    info["dev notes"] = "simulated";
    info["dev location desc"] = "东门 East gate";
    info["sound volume"] = 18;
    info["user dev type"] = 0;

    Json::Value &work = document["work param"];
    work["local ip"] = "192.168.31.5";
    work["local port"] = 20086;
    work["gateway ip"] = "192.168.31.1";
    work["auto reboot"] = 1;
    work["auto reboot time"] = 270;
    work["remote enroll func"] = 1;

    document["sys set"] = Json::nullValue;
    return document;
}

QString deviceName()
{
    return QStringLiteral("Palm terminal (simulated)");
}

Json::Value systemInfoDocument(const QString &serialNumber, int maxUsers)
{
    Json::Value document;
    document["dev_name"] = deviceName().toStdString();
    document["dev_serial"] = serialNumber.toStdString();
    document["fw_version"] = "4.2.1";
    document["vein_alg_version"] = "3.0.7";
    document["print_alg_version"] = "2.8.2";
    document["qrcode_alg_version"] = "1.1.0";
    document["max_user_num"] = maxUsers;
    document["max_record_num"] = MostRecords;
    document["mac_address"] = "02:4B:56:00:20:86"; // locally administered: no real card has it
    return document;
}

} // namespace sim
