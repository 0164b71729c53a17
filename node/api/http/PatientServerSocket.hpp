/// A listening socket for Poco's server, which looks four times a second whether it is to stop: this one lets it wait until
/// somebody comes, or until it is told.
///
/// Threads:   the server's; tellStop from any.
/// Ownership: shares the socket that it was made of.
#pragma once

#include <Poco/Net/ServerSocket.h>

namespace ZorvNode {

class PatientServerSocket : public Poco::Net::ServerSocket {
public:
    explicit PatientServerSocket(const Poco::Net::ServerSocket& listening);

    /// From now on waiting ends at once. To be called before the server is stopped.
    void tellStop();

private:
    class Impl;
};

}  // namespace ZorvNode
