#include "data/json.h"

#include <json/reader.h>
#include <json/writer.h>

#include <exception>

namespace {

std::optional<QByteArray> utf8(const Json::Value &value)
{
    return value.isConvertibleTo(Json::stringValue)
               ? std::make_optional(QByteArray::fromStdString(value.asString()))
               : std::nullopt;
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

bool json::hasMembers(const Json::Value &value)
{
    return value.isObject() || value.isNull();
}

bool json::parseObject(const char *text, size_t length, Json::Value *root)
{
    return parse(text, length, root) && hasMembers(*root);
}

QByteArray json::written(const Json::Value &root)
{
    Json::StreamWriterBuilder writer;
    writer["emitUTF8"] = true;
    return QByteArray::fromStdString(Json::writeString(writer, root));
}

const Json::Value *json::member(const Json::Value &object, const char *key)
{
    return object.isObject() && object.isMember(key) ? &object[key] : nullptr;
}

const Json::Value *json::array(const Json::Value &object, const char *key)
{
    const Json::Value *value = member(object, key);
    return value && value->isArray() ? value : nullptr;
}

std::optional<QString> json::text(const Json::Value &value)
{
    const std::optional<QByteArray> text = utf8(value);
    return text ? std::make_optional(QString::fromUtf8(text->constData(), text->size()))
                : std::nullopt;
}

std::optional<QString> json::text(const Json::Value &object, const char *key)
{
    const Json::Value *value = member(object, key);
    return value ? text(*value) : std::nullopt;
}

std::optional<QByteArray> json::bytes(const Json::Value &object, const char *key)
{
    const Json::Value *value = member(object, key);
    return value ? utf8(*value) : std::nullopt;
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
