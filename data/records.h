#pragma once

#include "link/exchange.h"

#include <QByteArray>
#include <QDate>
#include <QStringList>

#include <optional>
#include <string_view>
#include <vector>

class CmdClient;

/// Read-only view of one access record of a page, whose bytes it borrows.
class RecordView
{
public:
    static constexpr int TextCount = 4;
    enum Type : uint8_t { Palm = 0, Card = 1 };

    explicit RecordView(const uint8_t *firstByte)
        : record(firstByte)
    {
    }

    /// Returns a Type or another number.
    uint8_t type() const { return record[0]; }
    /// Returns one of the four texts, index 0 to 3, as unchecked UTF-8. A text without a zero at
    /// the end of its field continues into the next field, but not beyond the record.
    std::string_view text(int index) const;

private:
    const uint8_t *record;
};

/// A page of a month's records.
struct RecordPage
{
    std::vector<uint8_t> bytes; ///< records of wire::RecordSize bytes, then unused room
    uint32_t count = 0;

    RecordView record(uint32_t index) const
    {
        return RecordView(bytes.data() + index * wire::RecordSize);
    }
    /// Returns a hash of the records. Records of a month differ, and so do the hashes of its pages.
    size_t hash() const;
};

/// Fetches a page; the day of `month` is ignored. The timeout is `rounds` milliseconds.
bool fetchRecordPage(CmdClient *client, const QDate &month, uint32_t firstIndex, RecordPage *page,
                     int rounds = TimeOutRounds);

bool fetchRecordFiles(CmdClient *client, QByteArray *text);
/// Returns the names of the record files, without entries that are not texts; nothing if the text
/// is not a JSON object.
std::optional<QStringList> readRecordFiles(const QByteArray &text);
