#include "Socket.hpp"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace ZorvBench {

namespace {

constexpr timeval longestWait{60, 0};

/// @return the result of a system call that has succeeded.
template <class ResultT>
ResultT checked(ResultT result, const char* what)
{
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

sockaddr_un toUnix(const std::string& path)
{
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    if (path.copy(name.sun_path, sizeof(name.sun_path) - 1) < path.size()) {
        throw std::system_error(ENAMETOOLONG, std::generic_category(), path);
    }
    return name;
}

sockaddr_in toLoopback(std::uint16_t port)
{
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(port);
    name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return name;
}

template <class NameT>
void connectDescriptor(int descriptor, const NameT& name)
{
    checked(::connect(descriptor, reinterpret_cast<const sockaddr*>(&name), sizeof(name)), "cannot connect");
}

}  // namespace

Socket::Socket(const Address& address)
    : descriptor(checked(::socket(address.socket.empty() ? AF_INET : AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket"))
{
    try {
        limitWaiting();
        connectTo(address);
    } catch (const std::system_error&) {
        ::close(descriptor);
        throw;
    }
}

Socket::~Socket()
{
    ::close(descriptor);
}

void Socket::connectTo(const Address& address)
{
    if (address.socket.empty()) {
        const int on = 1;
        checked(::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on)), "TCP_NODELAY");
        connectDescriptor(descriptor, toLoopback(address.port));
    } else {
        connectDescriptor(descriptor, toUnix(address.socket));
    }
}

void Socket::limitWaiting()
{
    for (const int option : {SO_RCVTIMEO, SO_SNDTIMEO}) {
        checked(::setsockopt(descriptor, SOL_SOCKET, option, &longestWait, sizeof(longestWait)), "time limit");
    }
}

void Socket::send(std::string_view data)
{
    while (!data.empty()) {
        data.remove_prefix(static_cast<std::size_t>(
            checked(::send(descriptor, data.data(), data.size(), MSG_NOSIGNAL), "cannot send")));
    }
}

/// As zorv's client does: a thread that waits in recv is also woken when the other side has read what was sent.
std::size_t Socket::receive(char* buffer, std::size_t size)
{
    pollfd readable{descriptor, POLLIN, 0};
    checked(::poll(&readable, 1, static_cast<int>(longestWait.tv_sec) * 1000), "cannot wait");
    return static_cast<std::size_t>(checked(::recv(descriptor, buffer, size, 0), "cannot receive"));
}

}  // namespace ZorvBench
