#pragma once

#include <QByteArray>

#include <json/value.h>

namespace sim {

/// False, with `object` untouched, unless the text is one JSON object in UTF-8, without comments
/// or keys that come twice. Never throws.
bool parseObject(const QByteArray &text, Json::Value *object);

/// UTF-8, without indentation or line breaks.
QByteArray toText(const Json::Value &value);

/// Takes over the members of `update` whose key exists in `target` with the same kind of value;
/// objects are walked down to their members, everything else in `update` is left aside.
void mergeKnown(Json::Value &target, const Json::Value &update);

} // namespace sim
