#include "StreamReader.hpp"

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>

#include <algorithm>

#include "json/Json.hpp"

namespace ZorvTest {

namespace {

const std::string eventField = "event: ";
const std::string idField = "id: ";
const std::string dataField = "data: ";
constexpr unsigned deepest = 8;
constexpr std::chrono::milliseconds pause(20);

bool isField(const std::string& line, const std::string& field)
{
    return line.compare(0, field.size(), field) == 0;
}

StreamPlace placeOf(const std::string& text)
{
    const std::size_t dot = text.find('.');
    return {std::stoull(text.substr(0, dot)), std::stoull(text.substr(dot + 1))};
}

}  // namespace

StreamReader::StreamReader(const std::string& socket, const StreamWish& wish)
    : dawdles(wish.dawdles),
      isPlaced(wish.after.has_value())
{
    figures.place = wish.after.value_or(StreamPlace());
    const std::string target = "/v1/notifications?after=" + (isPlaced ? figures.place.toText() : "oldest") +
                               (wish.follow ? "" : "&follow=false");
    thread = std::thread([this, socket, target] { follow(socket, target); });
}

StreamReader::~StreamReader()
{
    finish();
}

const StreamFigures& StreamReader::finish()
{
    finishing = true;
    if (thread.joinable()) {
        thread.join();
    }
    return figures;
}

void StreamReader::follow(const std::string& socket, const std::string& target)
{
    try {
        Poco::Net::HTTPClientSession session(
            Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket)));
        Poco::Net::HTTPRequest request("GET", target, Poco::Net::HTTPMessage::HTTP_1_1);
        session.sendRequest(request);
        Poco::Net::HTTPResponse response;
        std::istream& body = session.receiveResponse(response);
        for (std::string line; std::getline(body, line) && !body.eof();) {  // the last line may be torn
            if (isField(line, eventField)) {
                figures.lastEvent = line.substr(eventField.size());
            } else if (isField(line, idField)) {
                eventPlace = placeOf(line.substr(idField.size()));
            } else if (isField(line, dataField)) {
                note(line.substr(dataField.size()));
                while (dawdles && !finishing) {
                    std::this_thread::sleep_for(pause);
                }
            }
        }
    } catch (const Poco::Exception&) {
        return;  // the node has gone, or has cut this reader off
    }
}

void StreamReader::note(const std::string& data)
{
    const auto now = ClockT::now();
    if (lastHeartbeat) {
        figures.longestSilence = std::max<std::chrono::duration<double>>(figures.longestSilence, now - *lastHeartbeat);
    }
    const std::uint64_t coming = isPlaced ? eventPlace.total() - figures.place.total() : 0;
    if (figures.lastEvent == "resync") {
        noteResync();
    } else if (figures.lastEvent == "alarm") {
        figures.unexplained += isPlaced ? coming - 1 : 0;
        noteAlarm(data);
    } else if (figures.lastEvent == "heartbeat") {
        figures.unexplained += coming;
        ++figures.heartbeats;
        lastHeartbeat = now;
        isPlaced = true;
    } else {
        ++figures.rebuilts;
    }
    figures.place = eventPlace;
}

/// At the beginning of a stream it says that what lies between is not known; where the numbers stand the next heartbeat
/// tells. Later on its place is that of the gap's end.
void StreamReader::noteResync()
{
    const bool isFirst = figures.alarms + figures.heartbeats + figures.rebuilts + figures.resyncs == 0;
    ++figures.resyncs;
    isPlaced = isPlaced && !isFirst;
    figures.missed += isPlaced ? eventPlace.total() - figures.place.total() : 0;
}

void StreamReader::noteAlarm(const std::string& data)
{
    ++figures.alarms;
    ZorvInput::JsonDocumentT alarm;
    ZorvInput::parseJson(data, deepest, alarm);
    if (!alarm["stateful"].GetBool()) {
        return;
    }
    const std::string dn = alarm["dn"].GetString();
    if (alarm["severity"] == "CLEARED") {
        figures.active.erase(dn);
    } else {
        figures.active.insert(dn);
    }
}

}  // namespace ZorvTest
