/// Reads the user list.

#include "app/documentlines.h"
#include "fuzz/harness.h"
#include "widgets/textlog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &log = *new QTextEdit;
    log.clear();
    const std::optional<ListDocument<User>> users =
        readUsers(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    textlog::append(&log, users ? userLines(*users) : QStringList());
    return 0;
}
