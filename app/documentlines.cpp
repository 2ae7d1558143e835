#include "app/documentlines.h"

#include "app/mainwindow.h"
#include "config/json.h"

#include <algorithm>

namespace {

std::optional<QString> latin1Text(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    const std::optional<QByteArray> bytes = json::bytes(object, key);
    return bytes && !value->isNull()
               ? std::make_optional(QString::fromLatin1(bytes->constData(), bytes->size()))
               : std::nullopt;
}

/// Only what is a text in the document, up to a zero in it.
std::optional<QString> latin1CString(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    return value && value->isString() ? std::make_optional(QString::fromLatin1(value->asCString()))
                                      : std::nullopt;
}

std::optional<QString> decimal(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    const std::optional<quint32> number = json::unsignedNumber(object, key);
    return number && !value->isNull() ? std::make_optional(QString::number(*number)) : std::nullopt;
}

/// A member of the system information and its line in the log; passed over when it is not there
/// or cannot be read so.
struct SystemInfoRow
{
    const char *key;
    const char *line;
    std::optional<QString> (*read)(const Json::Value &object, const char *key);
};

constexpr SystemInfoRow SystemInfoRows[] = {
    {"dev_name", QT_TRANSLATE_NOOP("MainWindow", "Device Name：%1"), latin1Text},
    {"dev_serial", QT_TRANSLATE_NOOP("MainWindow", "Device Serial Number：%1"), latin1Text},
    {"fw_version", QT_TRANSLATE_NOOP("MainWindow", "Firmware Version：%1"), latin1Text},
    {"vein_alg_version", QT_TRANSLATE_NOOP("MainWindow", "Vein Algorithm Version：%1"), latin1Text},
    {"print_alg_version", QT_TRANSLATE_NOOP("MainWindow", "Print Algorithm Version：%1"),
     latin1Text},
    {"qrcode_alg_version", QT_TRANSLATE_NOOP("MainWindow", "QrCode Algorithm Version：%1"),
     latin1Text},
    {"max_user_num", QT_TRANSLATE_NOOP("MainWindow", "System User Volume：%1"), decimal},
    {"max_record_num", QT_TRANSLATE_NOOP("MainWindow", "System Record Volume：%1"), decimal},
    {"mac_address", QT_TRANSLATE_NOOP("MainWindow", "MAC Address：%1"), latin1CString},
};

} // namespace

std::optional<QStringList> userLines(const char *text, size_t length)
{
    Json::Value root;
    if (!json::parseObject(text, length, &root))
        return std::nullopt;
    const Json::Value *users = json::array(root, "user_list");
    if (!users)
        return QStringList();
    if (!std::all_of(users->begin(), users->end(), json::hasMembers))
        return std::nullopt;

    QStringList lines(MainWindow::tr("User count：%1").arg(users->size()));
    const QString line = MainWindow::tr("UID:%1, username: %2, feature count:%3");
    for (const Json::Value &user : *users) {
        const qint64 features = qint64{json::number(user, "vein_cnt").value_or(0)} +
                                json::number(user, "print_cnt").value_or(0);
        lines.append(line.arg(json::text(user, "id").value_or(QString()),
                              json::text(user, "user_name").value_or(QString()),
                              QString::number(features)));
    }
    return lines;
}

std::optional<QStringList> systemInfoLines(const char *text, size_t length)
{
    Json::Value root;
    if (!json::parseObject(text, length, &root))
        return std::nullopt;
    QStringList lines;
    for (const SystemInfoRow &row : SystemInfoRows) {
        if (const std::optional<QString> value = row.read(root, row.key))
            lines.append(MainWindow::tr(row.line).arg(*value));
    }
    return lines;
}
