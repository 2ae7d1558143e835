#pragma once

#include <QByteArray>
#include <QString>

#include <json/value.h>

#include <cstddef>
#include <optional>

/// Reading and writing the terminal's JSON documents. No exception leaves these functions, whatever
/// the document holds.
namespace json {

/// False, with `root` null, when the text is no JSON document or is nested too deeply.
bool parse(const char *text, size_t length, Json::Value *root);

/// Whether members can be looked for in it; a null has none.
bool hasMembers(const Json::Value &value);
/// Like parse(), and false too for a document of a kind that has no members.
bool parseObject(const char *text, size_t length, Json::Value *root);

/// The document as text, members in ascending order, one a line; characters stand as UTF-8.
QByteArray written(const Json::Value &root);

/// The member; null where there is none.
const Json::Value *member(const Json::Value &object, const char *key);
/// The member that is an array; null where there is none such.
const Json::Value *array(const Json::Value &object, const char *key);

/// None where the value is of a kind that cannot be read so. Numbers and booleans are readable as
/// text; a null reads as an empty text and as 0.
std::optional<QString> text(const Json::Value &value);
/// Members of `object`; none also where the member is absent.
std::optional<QString> text(const Json::Value &object, const char *key);
/// Like text(), as the raw bytes of the document.
std::optional<QByteArray> bytes(const Json::Value &object, const char *key);
/// Whole part of a number that lies within 32 bits, signed or unsigned.
std::optional<int> number(const Json::Value &object, const char *key);
std::optional<quint32> unsignedNumber(const Json::Value &object, const char *key);

} // namespace json
