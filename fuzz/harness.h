#pragma once

#include "testkit/replayclient.h"

#include <QTextEdit>

/// Functions shared by the fuzz targets. A target is a program with one function,
/// LLVMFuzzerTestOneInput. It is built with libFuzzer, or with a main function that runs it on
/// files.
namespace harness {

/// Creates the application once per program, off-screen and with debug output switched off.
void prepareApplication();

/// Returns a whole reply of status 0 with this data.
QByteArray reply(const uint8_t *data, size_t size);

/// Presses a button of a dialog, found by its object name.
void click(const QWidget &dialog, const char *button);

} // namespace harness

namespace harness {

/// Presses a dialog's button; its client gets this data as the reply.
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
