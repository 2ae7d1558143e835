#include "app/keepalive.h"

#include <QTcpSocket>

#if defined(Q_OS_WIN)
#include <winsock2.h>

#include <mstcpip.h>
#elif defined(Q_OS_UNIX)
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

#if defined(Q_OS_WIN)

void keepAlive(QTcpSocket *socket)
{
    // Milliseconds before the first probe and between two probes. Windows sends ten of them.
    tcp_keepalive times = {1, 10000, 1500};
    DWORD returned = 0;
    WSAIoctl(static_cast<SOCKET>(socket->socketDescriptor()), SIO_KEEPALIVE_VALS, &times,
             sizeof times, nullptr, 0, &returned, nullptr, nullptr);
}

#else

namespace {

struct Setting
{
    int option;
    int value;
};

// Seconds before the first probe, seconds between two probes, number of probes.
constexpr Setting Settings[] = {
#if defined(TCP_KEEPIDLE)
    {TCP_KEEPIDLE, 10},
#elif defined(TCP_KEEPALIVE)
    {TCP_KEEPALIVE, 10},
#endif
    {TCP_KEEPINTVL, 5},
    {TCP_KEEPCNT, 3},
};

} // namespace

void keepAlive(QTcpSocket *socket)
{
    socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    for (const Setting &setting : Settings)
        setsockopt(static_cast<int>(socket->socketDescriptor()), IPPROTO_TCP, setting.option,
                   &setting.value, sizeof setting.value);
}

#endif
