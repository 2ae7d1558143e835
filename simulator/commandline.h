#pragma once

#include "simulator/terminal.h"

class QCommandLineParser;
class QCoreApplication;

namespace sim {

struct Settings
{
    QHostAddress address;
    quint16 port = 0; ///< 0: any free one
    bool verbose = false;
    bool endWithInput = false;
    QString dataFile; ///< empty: none
    TerminalOptions terminal;
};

/// Reads the program's arguments. Ends the process for --help, --version and unknown options;
/// false, with `error` telling which option has a bad value, when a value cannot be used.
bool readArguments(const QCoreApplication &app, Settings *settings, QString *error);

} // namespace sim
