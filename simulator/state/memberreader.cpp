#include "simulator/state/memberreader.h"

#include "simulator/state/walltime.h"

#include <algorithm>

namespace sim {

void MemberReader::require(bool rule, const char *key)
{
    if (!rule && good())
        m_bad = QString::fromLatin1(key);
}

const Json::Value &MemberReader::member(const Json::Value &object, const char *key) const
{
    return object.isObject() ? object[key] : Json::Value::nullSingleton();
}

qint64 MemberReader::number(const Json::Value &object, const char *key, qint64 lowest,
                            qint64 highest)
{
    const Json::Value &value = member(object, key);
    const bool fits = value.isInt64() && value.asInt64() >= lowest && value.asInt64() <= highest;
    require(fits, key);
    return fits ? value.asInt64() : lowest;
}

int MemberReader::integer(const Json::Value &object, const char *key, int lowest, int highest)
{
    return static_cast<int>(number(object, key, lowest, highest));
}

QString MemberReader::text(const Json::Value &object, const char *key, int mostBytes)
{
    const Json::Value &value = member(object, key);
    const std::string bytes = value.isString() ? value.asString() : std::string();
    QString decoded = QString::fromStdString(bytes);
    const bool sound = value.isString() && decoded.toStdString() == bytes;
    require(sound && bytes.size() <= static_cast<size_t>(mostBytes), key);
    return decoded;
}

QDateTime MemberReader::time(const Json::Value &object, const char *key)
{
    QDateTime time = readTimeText(text(object, key, 32));
    require(time.isValid(), key);
    return time;
}

const Json::Value &MemberReader::object(const Json::Value &object, const char *key)
{
    const Json::Value &value = member(object, key);
    require(value.isObject(), key);
    return value;
}

const Json::Value &MemberReader::objects(const Json::Value &object, const char *key, int most)
{
    const Json::Value &value = member(object, key);
    const bool usable =
        value.isArray() && value.size() <= static_cast<Json::ArrayIndex>(most) &&
        std::all_of(value.begin(), value.end(), [](const auto &item) { return item.isObject(); });
    require(usable, key);
    return usable ? value : Json::Value::nullSingleton();
}

} // namespace sim
