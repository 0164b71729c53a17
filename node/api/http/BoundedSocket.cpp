#include "api/http/BoundedSocket.hpp"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace ZorvNode {

using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

constexpr std::int64_t longestPoll = 3600000;  // ms

}  // namespace

BoundedSocket::BoundedSocket(const Poco::Net::StreamSocket& connected)
    : StreamSocketImpl(connected.impl()->sockfd()),
      inner(connected)
{
}

BoundedSocket::~BoundedSocket()
{
    reset();  // the descriptor is the inner socket's
}

void BoundedSocket::allow(std::size_t bytes, std::chrono::milliseconds time)
{
    bytesLeft = bytes;
    refusal = Refusal::none;
    latest = steady_clock::now() + time;
}

int BoundedSocket::receiveBytes(void* buffer, int length, int flags)
{
    if (bytesLeft == 0) {
        refusal = Refusal::tooLarge;
        throw Poco::IOException("more bytes than are allowed");
    }
    if (!std::exchange(isReadable, false)) {
        const auto left = std::chrono::duration_cast<microseconds>(latest - steady_clock::now());
        if (left.count() <= 0 || !await(Poco::Timespan(left.count()))) {
            refusal = Refusal::tooSlow;
            throw Poco::TimeoutException("not received in time");
        }
    }
    const int most = static_cast<int>(std::min(bytesLeft, static_cast<std::size_t>(length)));
    const int received = inner.impl()->receiveBytes(buffer, most, flags);
    if (received > 0) {
        bytesLeft -= std::min(bytesLeft, static_cast<std::size_t>(received));
    }
    ended = ended || received == 0;
    return received;
}

int BoundedSocket::sendBytes(const void* buffer, int length, int flags)
{
    try {
        return inner.impl()->sendBytes(buffer, length, flags);
    } catch (const Poco::IOException& e) {
        stalled = e.code() == EAGAIN;  // the send timeout
        throw;
    }
}

bool BoundedSocket::poll(const Poco::Timespan& timeout, int mode)
{
    if (mode != SELECT_READ) {
        return inner.poll(timeout, mode);
    }
    isReadable = await(timeout);
    return isReadable;
}

/// The library's own way makes a descriptor for each time.
bool BoundedSocket::await(const Poco::Timespan& timeout)
{
    if (inner.secure() && inner.available() > 0) {
        return true;  // decrypted already
    }
    pollfd waiting = {sockfd(), POLLIN, 0};
    const auto end = steady_clock::now() + microseconds(timeout.totalMicroseconds());
    int ready = 0;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now()).count();
        ready = ::poll(&waiting, 1, static_cast<int>(std::clamp<std::int64_t>(left, 0, longestPoll)));
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

void BoundedSocket::shutdown()
{
    ::shutdown(sockfd(), SHUT_RDWR);
}

void BoundedSocket::shutdownReceive()
{
    ::shutdown(sockfd(), SHUT_RD);
}

void BoundedSocket::shutdownSend()
{
    inner.shutdownSend();
}

void BoundedSocket::close()
{
    inner.close();
}

void BoundedSocket::setSendTimeout(const Poco::Timespan& timeout)
{
    inner.setSendTimeout(timeout);
}

void BoundedSocket::setReceiveTimeout(const Poco::Timespan& timeout)
{
    inner.setReceiveTimeout(timeout);
}

Poco::Timespan BoundedSocket::getSendTimeout()
{
    return inner.getSendTimeout();
}

Poco::Timespan BoundedSocket::getReceiveTimeout()
{
    return inner.getReceiveTimeout();
}

Poco::Net::SocketAddress BoundedSocket::address()
{
    if (!ownAddress) {
        ownAddress = inner.address();
    }
    return *ownAddress;
}

Poco::Net::SocketAddress BoundedSocket::peerAddress()
{
    if (!peersAddress) {
        peersAddress = inner.peerAddress();
    }
    return *peersAddress;
}

bool BoundedSocket::secure() const
{
    return inner.secure();
}

}  // namespace ZorvNode
