#pragma once

#include "data/systeminfo.h"
#include "data/users.h"

#include <QStringList>

/// The lines of the log that show a document of the terminal; none where there is none.
QStringList userLines(const ListDocument<User> &users);
QStringList systemInfoLines(const SystemInfo &info);
