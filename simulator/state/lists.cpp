#include "simulator/state/lists.h"

#include "simulator/state/json.h"
#include "simulator/state/walltime.h"

namespace sim {
namespace {

// Bytes of text; the replies stay within the 800000 and 614400 of a wait.
constexpr size_t LongestUserList = 799'990;
constexpr size_t LongestQrList = 614'390;
// So many entries fit whatever their texts are, so that short lists need not be measured.
constexpr size_t SurelyFittingUsers = 4500;
constexpr size_t SurelyFittingCodes = 150;

Json::Value listEntry(const User &user)
{
    Json::Value entry;
    entry["id"] = std::to_string(user.id);
    entry["card_id"] = std::to_string(user.cardId);
    entry["user_name"] = user.name.toStdString();
    entry["vein_cnt"] = user.veinCount;
    entry["print_cnt"] = user.printCount;
    return entry;
}

Json::Value listEntry(const QrCode &code)
{
    Json::Value entry;
    entry["name"] = code.note.toStdString();
    entry["st"] = timeText(code.start).toStdString();
    entry["et"] = timeText(code.end).toStdString();
    entry["QR"] = code.data.toStdString();
    return entry;
}

} // namespace

QByteArray userListText(const State &state)
{
    Json::Value document;
    Json::Value &users = document["user_list"] = Json::arrayValue;
    for (const auto &user : state.users)
        users.append(listEntry(user.second));
    return toText(document);
}

QByteArray qrListText(const State &state)
{
    Json::Value document;
    Json::Value &codes = document["qrcode data"] = Json::arrayValue;
    for (const QrCode &code : state.qrCodes)
        codes.append(listEntry(code));
    return toText(document);
}

bool userListFits(const State &state)
{
    const size_t count = state.users.size();
    // One of a user's two counts at most grows to two digits.
    return count <= SurelyFittingUsers ||
           static_cast<size_t>(userListText(state).size()) + count <= LongestUserList;
}

bool qrListFits(const State &state)
{
    return static_cast<size_t>(state.qrCodes.size()) <= SurelyFittingCodes ||
           static_cast<size_t>(qrListText(state).size()) <= LongestQrList;
}

} // namespace sim
