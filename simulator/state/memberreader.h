#pragma once

#include <QDateTime>
#include <QString>

#include <json/value.h>

namespace sim {

/// Reads the members of JSON objects and remembers the first that was not as it should be. What
/// is missing, of another kind or out of range reads as the lowest value, an empty text, an
/// invalid time, or as something without members.
class MemberReader
{
public:
    bool good() const { return m_bad.isEmpty(); }
    QString badMember() const { return m_bad; }

    qint64 number(const Json::Value &object, const char *key, qint64 lowest, qint64 highest);
    int integer(const Json::Value &object, const char *key, int lowest, int highest);
    QString text(const Json::Value &object, const char *key, int mostBytes);
    QDateTime time(const Json::Value &object, const char *key);
    const Json::Value &object(const Json::Value &object, const char *key);
    /// Of `most` elements or fewer, all of them objects.
    const Json::Value &objects(const Json::Value &object, const char *key, int most);

    /// For rules that a single value does not show.
    void require(bool rule, const char *key);

private:
    const Json::Value &member(const Json::Value &object, const char *key) const;

    QString m_bad;
};

} // namespace sim
