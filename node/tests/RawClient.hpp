/// A client that sends any text and takes the answer as it comes.
#pragma once

#include <Poco/Net/StreamSocket.h>

#include <string>

namespace ZorvNode {

class RawClient {
public:
    explicit RawClient(const Poco::Net::StreamSocket& connected) : socket(connected)
    {
        socket.setReceiveTimeout(Poco::Timespan(20, 0));
    }

    explicit RawClient(const std::string& path)
        : RawClient(Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, path)))
    {
    }

    void send(const std::string& text) { socket.sendBytes(text.data(), static_cast<int>(text.size())); }
    void endSending() { socket.shutdownSend(); }
    void close() { socket.close(); }

    std::string ask(const std::string& request)
    {
        send(request);
        return answer();
    }

    /// One answer, head and body.
    std::string answer()
    {
        const std::string head = until("\r\n\r\n");
        const std::string name = "Content-Length: ";
        const std::size_t length = head.find(name);
        return head + (length == std::string::npos ? "" : take(std::stoul(head.substr(length + name.size()))));
    }

    /// Up to a text, with it; less when the peer ends.
    std::string until(const std::string& text)
    {
        std::size_t found = received.find(text);
        while (found == std::string::npos && receive()) {
            found = received.find(text);
        }
        return take(found == std::string::npos ? received.size() : found + text.size());
    }

    /// All that comes until the peer ends.
    std::string rest()
    {
        while (receive()) {}
        return take(received.size());
    }

private:
    bool receive()
    {
        char block[65536];
        const int size = socket.receiveBytes(block, sizeof(block));
        received.append(block, size > 0 ? static_cast<std::size_t>(size) : 0);
        return size > 0;
    }

    std::string take(std::size_t size)
    {
        while (received.size() < size && receive()) {}
        std::string taken = received.substr(0, size);
        received.erase(0, size);
        return taken;
    }

    Poco::Net::StreamSocket socket;
    std::string received;
};

inline std::string bodyOf(const std::string& answer)
{
    return answer.substr(answer.find("\r\n\r\n") + 4);
}

/// "404 {...}"
inline std::string statusAndBody(const std::string& answer)
{
    return answer.substr(std::string("HTTP/1.1 ").size(), 4) + bodyOf(answer);
}

}  // namespace ZorvNode
