#pragma once

#include "data/json.h"

#include <algorithm>
#include <vector>

/// The entries of a list in one of the terminal's documents.
template <class Entry> struct ListDocument
{
    bool isPresent = false; ///< whether the document has the list, even an empty one
    std::vector<Entry> entries;
};

/// Reads the list under `key`. Returns nothing if the text is not a JSON object or an entry of the
/// list is not an object.
template <class Entry>
std::optional<ListDocument<Entry>> readList(const QByteArray &text, const char *key,
                                            Entry (*readEntry)(const Json::Value &))
{
    Json::Value root;
    if (!json::parseObject(text.constData(), static_cast<size_t>(text.size()), &root))
        return std::nullopt;
    ListDocument<Entry> document;
    const Json::Value *list = json::array(root, key);
    if (!list)
        return document;
    if (!std::all_of(list->begin(), list->end(), json::hasMembers))
        return std::nullopt;
    document.isPresent = true;
    document.entries.reserve(list->size());
    for (const Json::Value &entry : *list)
        document.entries.push_back(readEntry(entry));
    return document;
}
