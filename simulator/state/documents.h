#pragma once

#include <json/value.h>

class QString;

namespace sim {

/// The longest text of a document that the terminal keeps: a reply that carries it stays below
/// the 2500 bytes that consoles wait for.
constexpr int LongestDocument = 2490;

// The configuration as the terminal leaves the factory.
Json::Value factoryOutputDocument();
Json::Value factoryUserDocument();
Json::Value factoryVendorDocument();

/// The terminal's name, in the system information and in its messages.
QString deviceName();
Json::Value systemInfoDocument(const QString &serialNumber, int maxUsers);

} // namespace sim
