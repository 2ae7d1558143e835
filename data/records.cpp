#include "data/records.h"

#include "data/fetchtext.h"
#include "data/json.h"

#include <algorithm>
#include <functional>

namespace {

constexpr size_t PageCapacity = 409600;
constexpr size_t FileListCapacity = 4224;

// A record begins with its type. Its texts end with a zero byte.
constexpr size_t TextOffsets[RecordView::TextCount] = {4, 20, 36, 68};

} // namespace

std::string_view RecordView::text(int index) const
{
    const size_t offset = TextOffsets[index];
    const char *begin = reinterpret_cast<const char *>(record + offset);
    const char *end = begin + (wire::RecordSize - offset);
    return {begin, static_cast<size_t>(std::find(begin, end, '\0') - begin)};
}

size_t RecordPage::hash() const
{
    return std::hash<std::string_view>()(
        {reinterpret_cast<const char *>(bytes.data()), count * wire::RecordSize});
}

bool fetchRecordPage(CmdClient *client, const QDate &month, uint32_t firstIndex, RecordPage *page,
                     int rounds)
{
    page->bytes.resize(PageCapacity);
    return client->getMonthRecords(static_cast<uint16_t>(month.year()),
                                   static_cast<uint8_t>(month.month()), page->bytes.data(),
                                   page->bytes.size(), firstIndex, &page->count, rounds);
}

bool fetchRecordFiles(CmdClient *client, QByteArray *text)
{
    return fetchText(client, &CmdClient::getRecordFileList, FileListCapacity, text);
}

std::optional<QStringList> readRecordFiles(const QByteArray &text)
{
    Json::Value root;
    if (!json::parseObject(text.constData(), static_cast<size_t>(text.size()), &root))
        return std::nullopt;
    QStringList names;
    if (const Json::Value *files = json::array(root, "record_files")) {
        for (const Json::Value &file : *files) {
            if (const std::optional<QString> name = json::text(file))
                names.append(*name);
        }
    }
    return names;
}
