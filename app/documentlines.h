#pragma once

#include "data/systeminfo.h"
#include "data/users.h"

#include <QStringList>

/// Return the log lines that show a document of the terminal; no lines if the document is absent.
QStringList userLines(const ListDocument<User> &users);
QStringList systemInfoLines(const SystemInfo &info);
