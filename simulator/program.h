#pragma once

#include "simulator/terminal.h"

#include <vector>

class QCoreApplication;

namespace sim {

struct Settings
{
    QHostAddress address;
    quint16 port = 0; ///< of the first terminal; 0: any free one
    int terminals = 1;
    bool endWithInput = false;
    QString dataFile; ///< of the first terminal; empty: none
    TerminalOptions terminal;
};

/// Reads the program's arguments. Ends the process for --help, --version and unknown options.
/// Returns false, with `error` naming the option, when a value cannot be used.
bool readArguments(const QCoreApplication &app, Settings *settings, QString *error);

using Terminals = std::vector<std::unique_ptr<Terminal>>;

/// Starts the terminals of one program on consecutive ports. Returns false, with the reason, when
/// one of them cannot keep its state or listen.
bool startTerminals(const Settings &settings, Terminals *terminals, QString *error);

} // namespace sim
