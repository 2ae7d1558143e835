/// Reads the system information.

#include "app/documentlines.h"
#include "fuzz/harness.h"
#include "widgets/textlog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &log = *new QTextEdit;
    log.clear();
    const std::optional<SystemInfo> info =
        readSystemInfo(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    textlog::append(&log, info ? systemInfoLines(*info) : QStringList());
    return 0;
}
