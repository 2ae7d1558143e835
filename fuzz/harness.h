#pragma once

#include "link/cmdclient.h"

#include <QTextEdit>

/// What the fuzz targets share. A target is a program of one function, LLVMFuzzerTestOneInput; it
/// is built with libFuzzer, or with a main function that runs files of inputs.
namespace harness {

/// Made once for each program, off-screen, silent but for warnings.
void prepareApplication();

/// A reply of status 0 that carries the data whole.
QByteArray reply(const uint8_t *data, size_t size);

/// Presses a button of a dialog, found by its object name.
void click(const QWidget &dialog, const char *button);

} // namespace harness

/// A client that no terminal is connected to: every request is taken, every wait finds the same
/// bytes. What a wait would not accept as complete within its time ends it at once.
class ReplayClient : public CmdClient
{
public:
    explicit ReplayClient(QTextEdit *log);

    void setReply(const QByteArray &bytes) { bytesToFind = bytes; }

    int sendPacket(uint32_t totalLength) override;

protected:
    bool waitUntil(const std::function<bool()> &complete, int rounds) override;

private:
    QByteArray bytesToFind;
};

namespace harness {

/// Presses a dialog's button while its client finds this data as reply.
template <class Dialog> void receive(const char *button, const uint8_t *data, size_t size)
{
    prepareApplication();
    static auto &log = *new QTextEdit;
    static auto &client = *new ReplayClient(&log);
    static auto &dialog = *new Dialog(&client, &log, nullptr);
    log.clear();
    client.setReply(reply(data, size));
    click(dialog, button);
}

} // namespace harness
