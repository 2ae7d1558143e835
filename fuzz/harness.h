#pragma once

#include "testkit/replayclient.h"

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
