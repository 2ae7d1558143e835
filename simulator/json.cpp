#include "simulator/json.h"

#include <json/reader.h>
#include <json/writer.h>

#include <exception>
#include <memory>
#include <sstream>

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
    return builder;
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
    return QByteArray::fromStdString(Json::writeString(plainStyle(), value));
}

QByteArray toListText(const char *key, const std::vector<Json::Value> &entries, int longest)
{
    const std::unique_ptr<Json::StreamWriter> writer(plainStyle().newStreamWriter());
    const QByteArray end("]}");
    QByteArray text = QByteArray("{\"") + key + "\":[";
    QByteArray separator;
    for (const Json::Value &entry : entries) {
        std::ostringstream out;
        writer->write(entry, &out);
        const QByteArray piece = separator + QByteArray::fromStdString(out.str());
        if (text.size() + piece.size() + end.size() > longest)
            break;
        text += piece;
        separator = ",";
    }
    return text + end;
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
