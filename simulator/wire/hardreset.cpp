#include "simulator/wire/hardreset.h"

#include <QAbstractSocket>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace sim {
namespace {

#ifdef Q_OS_WIN
using Descriptor = SOCKET;
#else
using Descriptor = int;
#endif

} // namespace

void resetConnection(QAbstractSocket &socket)
{
    linger noTime{};
    noTime.l_onoff = 1;
    ::setsockopt(static_cast<Descriptor>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER,
                 reinterpret_cast<const char *>(&noTime), sizeof noTime);
    socket.abort();
}

} // namespace sim
