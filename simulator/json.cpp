#include "simulator/json.h"

#include <json/reader.h>
#include <json/writer.h>

#include <exception>
#include <memory>

namespace sim {
namespace {

bool sameKind(const Json::Value &a, const Json::Value &b)
{
    return (a.isInt() && b.isInt()) || (a.isString() && b.isString());
}

} // namespace

bool parseObject(const QByteArray &text, Json::Value *object)
{
    const Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    try {
        if (!reader->parse(text.cbegin(), text.cend(), &root, nullptr) || !root.isObject())
            return false;
    } catch (const std::exception &) {
        return false; // the library throws where a text is nested too deeply
    }
    *object = root;
    return true;
}

QByteArray toText(const Json::Value &value)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return QByteArray::fromStdString(Json::writeString(builder, value));
}

void mergeKnown(Json::Value &target, const Json::Value &update)
{
    for (const std::string &key : target.getMemberNames()) {
        if (!update.isMember(key))
            continue;
        Json::Value &old = target[key];
        const Json::Value &value = update[key];
        if (old.isObject() && value.isObject())
            mergeKnown(old, value);
        else if (sameKind(old, value))
            old = value;
    }
}

} // namespace sim
