/// The user list, as text.

#include "app/documentlines.h"
#include "fuzz/harness.h"
#include "link/textlog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &log = *new QTextEdit;
    log.clear();
    textlog::append(&log,
                    userLines(reinterpret_cast<const char *>(data), size).value_or(QStringList()));
    return 0;
}
