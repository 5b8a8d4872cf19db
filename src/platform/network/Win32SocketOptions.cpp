#include "SocketOptions.h"

#include <winsock2.h>

#include <mstcpip.h>
#include <ws2tcpip.h>

namespace {

/// TCP_MAXRT, which the headers of MinGW lack: in seconds, for bytes that are not acknowledged.
constexpr int longestRetransmission = 5;

} // namespace

void endWhenFarEndIsDead(qintptr socket)
{
    const auto handle = static_cast<SOCKET>(socket);
    // In milliseconds. Windows asks ten times.
    tcp_keepalive keepAlive{1, 10000, 1500};
    DWORD returned = 0;
    WSAIoctl(handle, SIO_KEEPALIVE_VALS, &keepAlive, sizeof keepAlive, nullptr, 0, &returned,
             nullptr, nullptr);
    const DWORD longest = 15;
    setsockopt(handle, IPPROTO_TCP, longestRetransmission, reinterpret_cast<const char*>(&longest),
               sizeof longest);
}

void acknowledgeAtOnce(qintptr /*socket*/) {}
