#include "api/http/HttpServices.hpp"

#include <Poco/Net/StreamSocketImpl.h>

namespace ZorvNode {

bool OpenConnections::add(Poco::Net::StreamSocketImpl* socket)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (ending || sockets.size() >= bound) {
        return false;
    }
    sockets.insert(socket);
    return true;
}

void OpenConnections::remove(Poco::Net::StreamSocketImpl* socket)
{
    const std::lock_guard<std::mutex> lock(mutex);
    sockets.erase(socket);
    changed.notify_all();
}

void OpenConnections::end(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(mutex);
    ending = true;
    const auto forAll = [this](void (Poco::Net::SocketImpl::*operation)()) {
        for (Poco::Net::StreamSocketImpl* socket : sockets) {
            try {
                (socket->*operation)();
            } catch (const Poco::Exception&) {
                // it has gone already
            }
        }
    };
    forAll(&Poco::Net::SocketImpl::shutdownReceive);
    if (!changed.wait_for(lock, patience, [this] { return sockets.empty(); })) {
        forAll(&Poco::Net::SocketImpl::shutdown);
    }
}

}  // namespace ZorvNode
