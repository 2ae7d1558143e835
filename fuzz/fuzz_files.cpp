/// Imports files: features and configuration documents.

#include "data/wholefile.h"
#include "fuzz/harness.h"

#include <QTemporaryFile>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &log = *new QTextEdit;
    static auto &client = *new ReplayClient(&log);
    static QTemporaryFile file;
    log.clear();
    client.setReply(harness::reply(nullptr, 0));
    if (!file.isOpen() && !file.open())
        abort();
    file.resize(0);
    file.seek(0);
    file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    file.flush();

    QByteArray content;
    if (!readFile(file.fileName(), wire::SendCapacity, &content))
        abort();
    const bool sent =
        client.setOutputConfig(content.constData(), static_cast<uint32_t>(content.size()));
    if (sent != (size <= wire::SendCapacity - wire::PayloadOffset))
        abort();
    if (!readFile(file.fileName(), wire::FeatureSize + 1, &content))
        abort();
    if (content.size() == static_cast<int>(wire::FeatureSize) &&
        !client.importUserFeatures(7, 1, reinterpret_cast<const uint8_t *>(content.constData()),
                                   wire::FeatureSize))
        abort();
    return 0;
}
