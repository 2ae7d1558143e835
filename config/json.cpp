#include "config/json.h"

#include <json/reader.h>
#include <json/writer.h>

#include <exception>

namespace {

const Json::Value *member(const Json::Value &object, const char *key)
{
    return object.isObject() && object.isMember(key) ? &object[key] : nullptr;
}

} // namespace

bool json::parse(const char *text, size_t length, Json::Value *root)
{
    try {
        Json::Reader reader;
        if (reader.parse(text, text + length, *root, false))
            return true;
    } catch (const std::exception &) { // nested too deeply
    }
    *root = Json::Value();
    return false;
}

QByteArray json::written(const Json::Value &root)
{
    Json::StreamWriterBuilder writer;
    writer["emitUTF8"] = true;
    return QByteArray::fromStdString(Json::writeString(writer, root));
}

std::optional<QString> json::text(const Json::Value &object, const char *key)
{
    const std::optional<QByteArray> utf8 = bytes(object, key);
    return utf8 ? std::make_optional(QString::fromUtf8(utf8->constData(), utf8->size()))
                : std::nullopt;
}

std::optional<QByteArray> json::bytes(const Json::Value &object, const char *key)
{
    const Json::Value *value = member(object, key);
    if (!value || !value->isConvertibleTo(Json::stringValue))
        return std::nullopt;
    return QByteArray::fromStdString(value->asString());
}

std::optional<int> json::number(const Json::Value &object, const char *key)
{
    const Json::Value *value = member(object, key);
    if (!value || !value->isConvertibleTo(Json::intValue))
        return std::nullopt;
    return value->asInt();
}

std::optional<quint32> json::unsignedNumber(const Json::Value &object, const char *key)
{
    const Json::Value *value = member(object, key);
    if (!value || !value->isConvertibleTo(Json::uintValue))
        return std::nullopt;
    return value->asUInt();
}
