#pragma once

#include <QByteArray>
#include <QString>

#include <json/value.h>

#include <cstddef>
#include <optional>

/// Functions to read and write the terminal's JSON documents. They throw no exception, whatever the
/// document contains.
namespace json {

/// Returns false, with `root` null, if the text is not a JSON document or is nested too deeply.
bool parse(const char *text, size_t length, Json::Value *root);

/// Returns whether the value is an object, or null, which counts as an object without members.
bool hasMembers(const Json::Value &value);
/// Like parse(), but also returns false for a document that is not an object.
bool parseObject(const char *text, size_t length, Json::Value *root);

/// Returns the document as UTF-8 text, one member per line, in ascending order.
QByteArray written(const Json::Value &root);

/// Returns the member, or null if there is none.
const Json::Value *member(const Json::Value &object, const char *key);
/// Returns the member, or null if there is none or it is not an array.
const Json::Value *array(const Json::Value &object, const char *key);

/// Returns nothing if the value cannot be converted. Numbers and booleans can be read as text; null
/// is read as an empty text or 0.
std::optional<QString> text(const Json::Value &value);
/// Reads a member of `object`; returns nothing if it is absent, too.
std::optional<QString> text(const Json::Value &object, const char *key);
/// Like text(), but returns the bytes of the document.
std::optional<QByteArray> bytes(const Json::Value &object, const char *key);
/// Returns the integer part of a number that fits into 32 bits, signed or unsigned.
std::optional<int> number(const Json::Value &object, const char *key);
std::optional<quint32> unsignedNumber(const Json::Value &object, const char *key);

} // namespace json
