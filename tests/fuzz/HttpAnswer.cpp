/// What a client of the node reads from its connection: any bytes are an answer within its bounds, or a lost connection.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "AnswerReader.hpp"
#include "FuzzTarget.hpp"
#include "HttpReader.hpp"
#include "TemporaryDirectory.hpp"

using namespace ZorvFuzz;
using namespace ZorvClient;

namespace {

constexpr std::size_t longestInput = 65536;  // fits into a socket's buffer
constexpr std::size_t longestBody = 1U << 20U;

/// A peer that says what it is told to and hangs up.
class Peer {
public:
    Peer() : listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)), path(directory.path("s"))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        const bool isThere = ::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
                             ::listen(listening, 1) == 0;
        require(isThere, "a peer can listen");
    }

    void connect(Socket& socket, const std::string& bytes) const
    {
        socket.connect(path);
        const int accepted = ::accept(listening, nullptr, nullptr);
        require(::send(accepted, bytes.data(), bytes.size(), MSG_DONTWAIT) == static_cast<ssize_t>(bytes.size()),
                "the peer can say it");
        ::close(accepted);
    }

private:
    const ZorvTest::TemporaryDirectory directory;
    const int listening;
    const std::string path;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Peer peer;
    Socket socket;
    peer.connect(socket, textOf(data, std::min(size, longestInput)));
    HttpReader reader(socket, std::chrono::steady_clock::now() + std::chrono::seconds(10));
    try {
        for (bool more = true; more;) {
            const HttpAnswer answer = reader.read();
            require(answer.status >= 200 && answer.status <= 999, "an answer has a status");
            require(answer.body.size() <= longestBody, "a body is bounded");
            readAnswer(answer.body);
            more = !answer.isLast;
        }
    } catch (const ConnectionLost& e) {
        require(*e.what() != '\0', "a lost connection has a reason");
    }
    return 0;
}
