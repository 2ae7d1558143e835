#include "simulator/state/json.h"

#include <QString>

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

Json::StreamWriterBuilder plainStyle()
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    builder["commentStyle"] = "None";
    return builder;
}

/// Nothing but plain JSON: no comments, no text behind it, no key twice.
Json::CharReaderBuilder strictReading()
{
    Json::CharReaderBuilder builder;
    builder["collectComments"] = false;
    builder["allowComments"] = false;
    builder["strictRoot"] = true;
    builder["failIfExtra"] = true;
    builder["rejectDupKeys"] = true;
    return builder;
}

/// Outside of strings a slash can only begin a comment. The reader lets some of them pass.
bool hasComment(const QByteArray &text)
{
    bool quoted = false;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == '"')
            quoted = !quoted;
        else if (quoted && text.at(i) == '\\')
            ++i;
        else if (!quoted && text.at(i) == '/')
            return true;
    }
    return false;
}

} // namespace

bool parseObject(const QByteArray &text, Json::Value *object)
{
    if (QString::fromUtf8(text).toUtf8() != text || hasComment(text))
        return false;
    const std::unique_ptr<Json::CharReader> reader(strictReading().newCharReader());
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
    return QByteArray::fromStdString(Json::writeString(plainStyle(), value));
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
