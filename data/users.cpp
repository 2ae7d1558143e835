#include "data/users.h"

#include "data/fetchtext.h"

namespace {

constexpr size_t Capacity = 819200;

User readUser(const Json::Value &user)
{
    return {
        json::text(user, "id").value_or(QString()), json::text(user, "card_id").value_or(QString()),
        json::text(user, "user_name").value_or(QString()),
        json::number(user, "vein_cnt").value_or(0), json::number(user, "print_cnt").value_or(0)};
}

} // namespace

bool fetchUserList(CmdClient *client, QByteArray *text)
{
    return fetchText(client, &CmdClient::getUserList, Capacity, text);
}

std::optional<ListDocument<User>> readUsers(const QByteArray &text)
{
    return readList(text, "user_list", readUser);
}
