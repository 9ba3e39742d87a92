// SPDX-License-Identifier: Apache-2.0
#include "base/TcpProbe.h"

#include <cerrno>
#include <fmt/format.h>
#include <memory>
#include <system_error>

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace zov {
namespace {

#ifdef _WIN32
using TSocket = SOCKET;
int LastFailure()
{
    return WSAGetLastError();
}
bool IsUnderWay(int failure)
{
    return failure == WSAEWOULDBLOCK;
}
void CloseSocket(TSocket socket)
{
    closesocket(socket);
}
void DontBlock(TSocket socket)
{
    u_long on = 1;
    ioctlsocket(socket, FIONBIO, &on);
}
int Poll(pollfd& one, int timeoutMs)
{
    return WSAPoll(&one, 1, timeoutMs);
}
#else
using TSocket = int;
int LastFailure()
{
    return errno;
}
bool IsUnderWay(int failure)
{
    return failure == EINPROGRESS;
}
void CloseSocket(TSocket socket)
{
    ::close(socket);
}
void DontBlock(TSocket socket)
{
    ::fcntl(socket, F_SETFL, O_NONBLOCK);
}
int Poll(pollfd& one, int timeoutMs)
{
    return ::poll(&one, 1, timeoutMs);
}
#endif

/// 0, or the platform's number of what went wrong.
int TryAddress(const addrinfo& address, int timeoutMs)
{
    const TSocket socket = ::socket(address.ai_family, address.ai_socktype, address.ai_protocol);
    if (static_cast<long long>(socket) < 0) {
        return LastFailure();
    }
    DontBlock(socket);
    int failure = 0;
    if (::connect(socket, address.ai_addr, static_cast<socklen_t>(address.ai_addrlen)) != 0) {
        failure = LastFailure();
        if (IsUnderWay(failure)) {
            pollfd wait{};
            wait.fd = socket;
            wait.events = POLLOUT;
            failure = ETIMEDOUT;
            if (Poll(wait, timeoutMs) > 0) {
                socklen_t length = sizeof failure;
                ::getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&failure),
                             &length);
            }
        }
    }
    CloseSocket(socket);
    return failure;
}

} // namespace

CResult<void> ProbeTcp(const std::string& host, int port, int timeoutMs)
{
    if (port < 1 || port > 65535) {
        return Fail(EErr::Argument, fmt::format("port {} is out of 1 to 65535", port));
    }
#ifdef _WIN32
    WSADATA unused{};
    WSAStartup(MAKEWORD(2, 2), &unused);
#endif
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (const int status =
            ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
        status != 0) {
        return Fail(EErr::NotFound,
                    fmt::format("'{}' has no address: {}", host, ::gai_strerror(status)));
    }
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> addresses(found, ::freeaddrinfo);
    int failure = 0;
    for (const addrinfo* address = found; address != nullptr; address = address->ai_next) {
        failure = TryAddress(*address, timeoutMs);
        if (failure == 0) {
            return {};
        }
    }
    return Fail(EErr::Io, fmt::format("no connection to {}:{}: {}", host, port,
                                      std::system_category().message(failure)));
}

} // namespace zov
