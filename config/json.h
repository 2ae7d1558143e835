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

/// The document as text, members in ascending order, one a line; characters stand as UTF-8.
QByteArray written(const Json::Value &root);

/// Members of `object`; none where the member is absent or is of a kind that cannot be read so.
/// Numbers and booleans are readable as text; a null reads as an empty text and as 0.
std::optional<QString> text(const Json::Value &object, const char *key);
/// Like text(), as the raw bytes of the document.
std::optional<QByteArray> bytes(const Json::Value &object, const char *key);
/// Whole part of a number that lies within 32 bits, signed or unsigned.
std::optional<int> number(const Json::Value &object, const char *key);
std::optional<quint32> unsignedNumber(const Json::Value &object, const char *key);

} // namespace json
