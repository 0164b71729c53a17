#include "api/http/PatientServerSocket.hpp"

#include <Poco/Net/NetException.h>
#include <Poco/Net/ServerSocketImpl.h>
#include <Poco/Net/StreamSocketImpl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>

namespace ZorvNode {

class PatientServerSocket::Impl : public Poco::Net::ServerSocketImpl {
public:
    explicit Impl(const Poco::Net::ServerSocket& listening)
        : inner(listening),
          stopDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
        if (stopDescriptor < 0) {
            throw Poco::Net::NetException("eventfd", errno);
        }
        reset(inner.impl()->sockfd());
    }

    void tellStop() const { eventfd_write(stopDescriptor, 1); }

    /// However long the caller wants to wait.
    bool poll(const Poco::Timespan& /*timeout*/, int /*mode*/) override
    {
        pollfd waiting[] = {{sockfd(), POLLIN, 0}, {stopDescriptor, POLLIN, 0}};
        return ::poll(waiting, 2, -1) > 0 && waiting[0].revents != 0 && waiting[1].revents == 0;
    }

    Poco::Net::SocketImpl* acceptConnection(Poco::Net::SocketAddress& peer) override
    {
        return inner.impl()->acceptConnection(peer);
    }

    bool secure() const override { return inner.impl()->secure(); }

protected:
    ~Impl() override
    {
        reset();  // the descriptor is the inner socket's
        ::close(stopDescriptor);
    }

private:
    const Poco::Net::ServerSocket inner;
    const int stopDescriptor;
};

PatientServerSocket::PatientServerSocket(const Poco::Net::ServerSocket& listening)
    : ServerSocket(new Impl(listening), true)
{
}

void PatientServerSocket::tellStop()
{
    static_cast<const Impl*>(impl())->tellStop();
}

}  // namespace ZorvNode
