/// Shows a message that the terminal pushes.

#include "app/watchserver.h"
#include "fuzz/harness.h"
#include "widgets/textlog.h"

#include <QTextBlock>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    static auto &log = *new QTextEdit;
    log.clear();
    textlog::append(&log, WatchServer::entry(input));
    for (QTextBlock line = log.document()->begin(); line.isValid(); line = line.next()) {
        if (line.length() > textlog::MaxLineLength + 2) // the ellipsis and the line's end
            abort();
    }
    return 0;
}
