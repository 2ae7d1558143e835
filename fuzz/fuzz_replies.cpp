/// Replies to every command: the first byte chooses the command, the rest is what arrives. Each
/// output is a block of its own of the size that the command is told, or documents.

#include "fuzz/harness.h"

#include <functional>
#include <vector>

namespace {

using Call = std::function<bool(CmdClient &)>;

/// A block that the sanitizer guards.
struct Block
{
    explicit Block(size_t size)
        : bytes(new uint8_t[size]),
          capacity(size)
    {
    }
    char *text() const { return reinterpret_cast<char *>(bytes.get()); }

    std::unique_ptr<uint8_t[]> bytes;
    size_t capacity;
};

/// A command that brings a text into a block.
template <class Unit>
Call text(bool (CmdClient::*command)(Unit *, uint32_t *, size_t), size_t capacity)
{
    return [=](CmdClient &client) {
        const Block out(capacity);
        uint32_t length = 0xFFFFFFFF;
        const bool accepted =
            (client.*command)(reinterpret_cast<Unit *>(out.text()), &length, capacity);
        if (accepted && length > capacity)
            abort();
        if (!accepted && length != 0xFFFFFFFF)
            abort();
        return accepted;
    };
}

template <class Value> Call value(bool (CmdClient::*command)(Value *))
{
    return [=](CmdClient &client) {
        Value out;
        return (client.*command)(&out);
    };
}

Call image(bool (CmdClient::*command)(uint8_t *))
{
    return [=](CmdClient &client) {
        const Block out(wire::FrameSize);
        return (client.*command)(out.bytes.get());
    };
}

const std::vector<Call> &calls()
{
    static const std::vector<Call> all = {
        value(&CmdClient::getTofDistance),
        image(&CmdClient::getPalmprintImage),
        image(&CmdClient::getPalmVeinImage),
        [](CmdClient &client) {
            const Block palmprint(wire::FrameSize);
            const Block vein(wire::FrameSize);
            return client.getDualImages(palmprint.bytes.get(), vein.bytes.get());
        },
        [](CmdClient &client) { return client.setMode(3); },
        value(&CmdClient::getMode),
        value(&CmdClient::getRtcTime),
        [](CmdClient &client) {
            const ClockRecord time{56, 11, 23, 1, 2, 3};
            return client.setRtcTime(&time);
        },
        [](CmdClient &client) {
            const uint8_t ip[4] = {127, 0, 0, 1};
            return client.setDebugAddress(ip, 60086);
        },
        [](CmdClient &client) { return client.setTofBias(-5); },
        value(&CmdClient::getTofBias),
        [](CmdClient &client) { return client.clearUsers(); },
        text(&CmdClient::getUserList, 1200),
        [](CmdClient &client) { return client.setUserConfig("{}", 2); },
        text(&CmdClient::getUserConfig, CmdClient::DocumentCapacity),
        [](CmdClient &client) {
            const Block out(CmdClient::DocumentCapacity);
            uint32_t length = 0;
            return client.getSystemInfo(out.text(), &length);
        },
        text(&CmdClient::getVendorConfig, 40),
        [](CmdClient &client) { return client.setVendorConfig("{}", 2); },
        text(&CmdClient::getOutputConfig, CmdClient::DocumentCapacity),
        [](CmdClient &client) { return client.setOutputConfig("{}", 2); },
        [](CmdClient &client) {
            const Block out(2 * wire::FrameSize);
            return client.getRemoteEnrollImages(out.bytes.get(), out.capacity, 255, 4);
        },
        [](CmdClient &client) {
            const Block out(wire::FeatureSize);
            return client.getRemoteFeatures(out.bytes.get(), out.capacity, 255);
        },
        [](CmdClient &client) {
            const Block features(wire::FeatureSize);
            return client.importUserFeatures(7, 1, features.bytes.get(), wire::FeatureSize);
        },
        [](CmdClient &client) {
            const UserRecord user{};
            return client.addUser(&user);
        },
        [](CmdClient &client) { return client.deleteUser(7); },
        value(&CmdClient::getEmptyUserId),
        [](CmdClient &client) { return client.deleteUserFeatures(7); },
        text(&CmdClient::getRecordFileList, 4224),
        [](CmdClient &client) { return client.deleteMonthRecords(2026, 11); },
        [](CmdClient &client) { return client.clearRecords(); },
        [](CmdClient &client) {
            const Block out(1000);
            uint32_t count = 0;
            const bool accepted =
                client.getMonthRecords(2026, 11, out.bytes.get(), out.capacity, 0, &count);
            if (accepted && count * wire::RecordSize > out.capacity)
                abort();
            return accepted;
        },
        [](CmdClient &client) { return client.setSerialNumber("KV2601SIM000001", 15); },
        [](CmdClient &client) {
            const QrEntry entry{};
            return client.addQrCode(&entry);
        },
        [](CmdClient &client) { return client.clearQrCodes(); },
        [](CmdClient &client) { return client.deleteQrCodeByRemark("a"); },
        [](CmdClient &client) { return client.deleteQrCodeByData("a"); },
        text(&CmdClient::getQrCodeList, 5000),
        [](CmdClient &client) { return client.rebootDevice(); },
        [](CmdClient &client) { return client.startEnroll(7); },
        [](CmdClient &client) { return client.startRemoteEnroll(7); },
    };
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &log = *new QTextEdit;
    static auto &client = *new ReplayClient(&log);
    if (size == 0)
        return 0;
    log.clear();
    client.setReply(
        QByteArray(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1));
    const bool accepted = calls()[data[0] % calls().size()](client);
    // Of a command that fails, only those that bring a picture or a value may say nothing.
    if (accepted && log.document()->blockCount() > 1)
        abort();
    return 0;
}
