#include "AlarmFollower.hpp"

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>

#include "json/Json.hpp"

namespace ZorvTest {

namespace {

const std::string dataField = "data: ";
constexpr unsigned deepest = 8;

}  // namespace

AlarmFollower::AlarmFollower(const std::string& socket) : thread([this, socket] { follow(socket); })
{
}

AlarmFollower::~AlarmFollower()
{
    getAlarms();
}

const std::vector<SeenAlarm>& AlarmFollower::getAlarms()
{
    if (thread.joinable()) {
        thread.join();
    }
    return alarms;
}

void AlarmFollower::follow(const std::string& socket)
{
    try {
        Poco::Net::HTTPClientSession session(
            Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket)));
        Poco::Net::HTTPRequest request("GET", "/v1/notifications?after=oldest", Poco::Net::HTTPMessage::HTTP_1_1);
        session.sendRequest(request);
        Poco::Net::HTTPResponse response;
        std::istream& body = session.receiveResponse(response);
        for (std::string line; std::getline(body, line) && !body.eof();) {  // the last line may be torn
            if (line.compare(0, dataField.size(), dataField) != 0) {
                continue;
            }
            ZorvInput::JsonDocumentT data;
            ZorvInput::parseJson(line.substr(dataField.size()), deepest, data);
            if (data.HasMember("stateful") && data["stateful"].GetBool()) {
                alarms.push_back({data["seqNo"].GetUint64(), data["dn"].GetString(), data["severity"].GetString()});
                ++numberSeen;
            }
        }
    } catch (const Poco::Exception&) {
        return;  // the node has gone
    }
}

}  // namespace ZorvTest
