/// A stream socket that takes a bounded number of bytes in a bounded time from its peer, request by request.
///
/// It stands in front of a connected socket, plain or TLS, which does the work.
///
/// Threads:   one, except that any may call shutdown and shutdownReceive, which cut the connection itself, whatever is
///            spoken on it.
/// Failure:   Poco's exceptions; getRefusal tells whether a bound was the reason.
#pragma once

#include <Poco/Net/StreamSocket.h>
#include <Poco/Net/StreamSocketImpl.h>

#include <chrono>
#include <optional>

namespace ZorvNode {

enum class Refusal { none, tooLarge, tooSlow };

class BoundedSocket : public Poco::Net::StreamSocketImpl {
public:
    explicit BoundedSocket(const Poco::Net::StreamSocket& connected);

    /// From now on so many bytes until the next call, and so much time.
    void allow(std::size_t bytes, std::chrono::milliseconds time);

    Refusal getRefusal() const { return refusal; }

    /// Whether the peer has not taken for too long what was sent.
    bool hasStalled() const { return stalled; }

    /// Whether a reader has wanted more than the peer has sent.
    bool hasEnded() const { return ended; }

    int receiveBytes(void* buffer, int length, int flags) override;
    int sendBytes(const void* buffer, int length, int flags) override;
    bool poll(const Poco::Timespan& timeout, int mode) override;
    void shutdown() override;
    void shutdownReceive() override;
    void shutdownSend() override;
    void close() override;
    void setSendTimeout(const Poco::Timespan& timeout) override;
    void setReceiveTimeout(const Poco::Timespan& timeout) override;
    Poco::Timespan getSendTimeout() override;
    Poco::Timespan getReceiveTimeout() override;
    Poco::Net::SocketAddress address() override;
    Poco::Net::SocketAddress peerAddress() override;
    bool secure() const override;

protected:
    ~BoundedSocket() override;

private:
    bool await(const Poco::Timespan& timeout);

    Poco::Net::StreamSocket inner;
    std::optional<Poco::Net::SocketAddress> ownAddress;  // asked for at each request; they stay the same
    std::optional<Poco::Net::SocketAddress> peersAddress;
    std::size_t bytesLeft = 0;
    Refusal refusal = Refusal::none;
    bool isReadable = false;  // was found, and nothing received since
    bool ended = false;
    bool stalled = false;
    std::chrono::steady_clock::time_point latest;
};

}  // namespace ZorvNode
