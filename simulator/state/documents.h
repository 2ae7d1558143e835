#pragma once

#include "simulator/state/state.h"

namespace sim {

/// Returns false, with `object` untouched, unless the text is one JSON object in UTF-8 without
/// comments or keys that occur twice. Never throws.
bool parseObject(const QByteArray &text, Json::Value *object);

/// Returns UTF-8 without indentation or line breaks.
QByteArray toText(const Json::Value &value);

/// Copies the members of `update` whose key exists in `target` with a value of the same kind.
/// Objects are merged member by member; all other members of `update` are ignored.
void mergeKnown(Json::Value &target, const Json::Value &update);

/// Longest text of a document that the terminal keeps: a reply that carries it stays below the
/// 2500 bytes for which consoles wait.
constexpr int LongestDocument = 2490;

/// The configuration of a new terminal.
Documents factoryDocuments();

/// The terminal's name in the system information and in its messages.
QString deviceName(const DeviceOptions &options);
Json::Value systemInfoDocument(const DeviceOptions &options, const QString &serialNumber);

// The lists of replies, as JSON.
QByteArray userListText(const State &state);
QByteArray qrListText(const State &state);

// Return true when the reply that carries the list is short enough for a console, and stays so
// however many features the users get.
bool userListFits(const State &state);
bool qrListFits(const State &state);

} // namespace sim
