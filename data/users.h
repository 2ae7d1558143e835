#pragma once

#include "data/listdocument.h"

class CmdClient;

/// A user in the terminal's list. A value that the list does not contain is empty or 0.
struct User
{
    QString id;
    QString card;
    QString name;
    int veinCount = 0;  ///< palm-vein features stored
    int printCount = 0; ///< palmprint features stored
};

bool fetchUserList(CmdClient *client, QByteArray *text);
std::optional<ListDocument<User>> readUsers(const QByteArray &text);
