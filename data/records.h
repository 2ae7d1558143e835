#pragma once

#include "link/exchange.h"

#include <QByteArray>
#include <QDate>
#include <QStringList>

#include <optional>
#include <string_view>
#include <vector>

class CmdClient;

/// One access record of a page, whose bytes it borrows.
class RecordView
{
public:
    static constexpr int TextCount = 4;
    enum Type : uint8_t { Palm = 0, Card = 1 };

    explicit RecordView(const uint8_t *firstByte)
        : record(firstByte)
    {
    }

    /// A Type, or any other number.
    uint8_t type() const { return record[0]; }
    /// One of the four texts, index 0 to 3, as UTF-8 that is not checked. A text that fills its
    /// field runs on into the next one, but never past the record.
    std::string_view text(int index) const;

private:
    const uint8_t *record;
};

/// A page of a month's records.
struct RecordPage
{
    std::vector<uint8_t> bytes; ///< records of wire::RecordSize, one behind the other, and room
    uint32_t count = 0;

    RecordView record(uint32_t index) const
    {
        return RecordView(bytes.data() + index * wire::RecordSize);
    }
    /// Hash of the records; no two pages of a month have the same, since their records differ.
    size_t hash() const;
};

/// Only the month's year and month count. Waits `rounds` milliseconds for the page.
bool fetchRecordPage(CmdClient *client, const QDate &month, uint32_t firstIndex, RecordPage *page,
                     int rounds = TimeOutRounds);

bool fetchRecordFiles(CmdClient *client, QByteArray *text);
/// The names of the record files; those that are no texts are left out. None when the text is no
/// document that can be walked.
std::optional<QStringList> readRecordFiles(const QByteArray &text);
