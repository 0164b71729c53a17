#include "Socket.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace ZorvClient {

namespace {

using LockT = std::lock_guard<std::mutex>;

[[noreturn]] void fail(const std::string& what)
{
    throw ConnectionLost(what + ": " + std::generic_category().message(errno));
}

bool wouldBlock()
{
    return errno == EAGAIN || errno == EWOULDBLOCK;
}

}  // namespace

void Socket::connect(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        throw ConnectionLost(path + " is too long");
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);

    const LockT lock(mutex);
    if (interrupted) {
        throw ConnectionLost("interrupted");
    }
    descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) {
        fail("socket");
    }
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        const int error = errno;
        ::close(descriptor);
        descriptor = -1;
        errno = error;
        fail(path);
    }
}

void Socket::close()
{
    const LockT lock(mutex);
    if (descriptor >= 0) {
        ::close(descriptor);
        descriptor = -1;
    }
}

bool Socket::send(const std::string& data, DeadlineT deadline)
{
    for (std::size_t sent = 0; sent < data.size();) {
        const ssize_t result = ::send(descriptor, data.data() + sent, data.size() - sent, MSG_NOSIGNAL);
        if (result >= 0) {
            sent += static_cast<std::size_t>(result);
        } else if (errno == EPIPE || errno == ECONNRESET) {  // NOLINT(bugprone-branch-clone): in this order
            return false;
        } else if (!wouldBlock()) {
            fail("send");
        } else if ((await(POLLIN | POLLOUT, deadline) & POLLIN) != 0) {
            return false;
        }
    }
    return true;
}

std::size_t Socket::receive(char* buffer, std::size_t size, DeadlineT deadline)
{
    for (;;) {
        const ssize_t result = ::recv(descriptor, buffer, size, 0);
        if (result >= 0) {
            return static_cast<std::size_t>(result);
        }
        if (!wouldBlock()) {
            fail("receive");
        }
        await(POLLIN, deadline);
    }
}

short Socket::await(short events, DeadlineT deadline) const
{
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(deadline - steady_clock::now());
    pollfd file{descriptor, events, 0};
    const int ready = left.count() > 0 ? ::poll(&file, 1, static_cast<int>(left.count())) : 0;
    if (ready == 0) {
        throw ConnectionLost("no answer in time");
    }
    if (ready < 0 && errno != EINTR) {
        fail("poll");
    }
    return file.revents;
}

void Socket::interrupt()
{
    const LockT lock(mutex);
    interrupted = true;
    if (descriptor >= 0) {
        ::shutdown(descriptor, SHUT_RDWR);
    }
}

void Socket::forgetInChild()
{
    // Closed, not shut down: the parent goes on with it.
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

}  // namespace ZorvClient
