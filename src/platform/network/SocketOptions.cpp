#include "SocketOptions.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

void setTcpOption(int descriptor, int option, int value)
{
    ::setsockopt(descriptor, IPPROTO_TCP, option, &value, sizeof value);
}

} // namespace

void endWhenFarEndIsDead(qintptr socket)
{
    const int descriptor = static_cast<int>(socket);
    const int on = 1;
    ::setsockopt(descriptor, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
#ifdef Q_OS_LINUX
    // In seconds: 10, and three times 5.
    setTcpOption(descriptor, TCP_KEEPIDLE, 10);
    setTcpOption(descriptor, TCP_KEEPINTVL, 5);
    setTcpOption(descriptor, TCP_KEEPCNT, 3);
    // In milliseconds. While bytes are not acknowledged the system does not ask, and the first of
    // them may have been sent after 10 s of silence.
    setTcpOption(descriptor, TCP_USER_TIMEOUT, 15000);
#endif
}

void acknowledgeAtOnce([[maybe_unused]] qintptr socket)
{
#ifdef Q_OS_LINUX
    setTcpOption(static_cast<int>(socket), TCP_QUICKACK, 1);
#endif
}
