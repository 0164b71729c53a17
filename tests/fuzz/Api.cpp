/// The node's HTTP interface: any bytes on a connection to a node are answered with HTTP and JSON, or not at all, and never
/// with an error of the node's own.
///
/// Each input meets a node of its own, without component libraries, as one connection that sends it and hangs up.
#include "api/Api.hpp"

#include <sys/socket.h>

#include <future>

#include "FuzzTarget.hpp"
#include "RawClient.hpp"
#include "TemporaryDirectory.hpp"
#include "api/http/HttpConnection.hpp"
#include "model/ModelReader.hpp"
#include "json/Json.hpp"

using namespace ZorvFuzz;
using namespace ZorvNode;

namespace {

const char* const modelText =
    "<ZorvModel>"
    "<enum name='Color'><member name='RED' value='1'/><member name='BLUE' value='-2'/></enum>"
    "<struct name='Pair'><attribute name='name' type='string'/><attribute name='value' type='int8'/></struct>"
    "<class name='Root'><attribute name='externalId' type='string' mandatory='true' default='x'/></class>"
    "<class name='Part' parent='Root Part'>"
    "<attribute name='number' type='uint32' min='1' max='9'/><attribute name='signed' type='int64'/>"
    "<attribute name='large' type='uint64'/><attribute name='flag' type='bool'/><attribute name='color' type='Color'/>"
    "<attribute name='pair' type='Pair'/><attribute name='pairs' type='Pair' sequence='true'/>"
    "<attribute name='other' type='reference'/><attribute name='fixed' type='string' readOnly='true'/></class>"
    "<object dn='Root=1'><object dn='Part=1'/></object>"
    "</ZorvModel>";

/// What all nodes share: files, and a configuration under which nothing waits.
struct Surroundings {
    Surroundings()
    {
        configuration.model = directory.write("model.xml", modelText);
        configuration.runDirectory = configuration.logDirectory = directory.path();
        configuration.store = {StoreKind::memory, Durability::process, directory.path(), false};
        configuration.api.socket = directory.path("s");
        configuration.api.streamBound = 0;  // a stream ends when its reader goes, and the reader waits for its end
        configuration.api.bodyBound = 60000;
        configuration.api.requestTime = std::chrono::seconds(2);
    }

    const ZorvTest::TemporaryDirectory directory;
    NodeConfiguration configuration;
};

struct Connection {
    Connection()
    {
        int ends[2];
        require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0, "a connection can be made");
        nodes = Poco::Net::StreamSocket(new Poco::Net::StreamSocketImpl(ends[0]));
        clients = Poco::Net::StreamSocket(new Poco::Net::StreamSocketImpl(ends[1]));
    }

    Poco::Net::StreamSocket nodes;
    Poco::Net::StreamSocket clients;
};

/// All that the node says to an input.
std::string ask(HttpServices& services, const std::string& input)
{
    static const LogSinkT log = [](std::int32_t, const std::string&) {};
    Connection connection;
    auto answers = std::async(std::launch::async, [&] {
        RawClient client(connection.clients);
        try {
            client.send(input);
            client.endSending();
        } catch (const Poco::Exception&) {
            // the node has had enough
        }
        return client.rest();
    });
    HttpConnection(connection.nodes, services, true, log).run();
    connection.nodes = Poco::Net::StreamSocket();
    return answers.get();
}

/// Checks the first answer, and that none of the others tells of an error inside the node. An answer to HEAD has a length
/// and no body, so that another may follow at once.
void check(const std::string& answers)
{
    require(answers.empty() || answers.compare(0, 9, "HTTP/1.1 ") == 0, "an answer is HTTP");
    require(answers.find("HTTP/1.1 500 ") == std::string::npos, "a request is no error of the node's");
    const std::size_t body = answers.find("\r\n\r\n") + 4;
    const std::size_t length = answers.find("Content-Length: ");
    if (length < body && body < answers.size() && answers.compare(body, 5, "HTTP/") != 0) {
        const std::string json = answers.substr(body, std::stoul(answers.substr(length + 16)));
        ZorvInput::JsonDocumentT document;
        ZorvInput::parseJson(json, 64, document);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Surroundings surroundings;
    Node node(surroundings.configuration, readModel(surroundings.configuration.model));
    node.interrupt();  // who asks it to settle does not wait
    const Api api(node);
    HttpServices services(surroundings.configuration.api, api.getRoutes());
    check(ask(services, textOf(data, size)));
    return 0;
}
