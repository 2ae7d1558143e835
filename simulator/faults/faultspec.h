#pragma once

#include "simulator/faults/fault.h"

#include <QString>

namespace sim {

/// Reads one fault such as "getMode:drop", "all:delay=200,chance=0.1" or
/// "0x10:cut=-1,from=2,times=1". False, with `error` naming the part that is wrong and `fault`
/// untouched, when it cannot be read.
bool parseFault(const QString &text, Fault *fault, QString *error);

/// What such a text is made of, for the program's help.
QString faultSyntax();

} // namespace sim
