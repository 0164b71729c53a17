#include "api/http/HttpErrorText.hpp"

#include "json/JsonWriter.hpp"

namespace ZorvNode {

using namespace ZorvInput;

using ResponseT = Poco::Net::HTTPResponse;

namespace {

std::string phraseOf(int status)
{
    constexpr int headerTooLarge = 431;  // POCO has no words for it
    return status == headerTooLarge ? "Request Header Fields Too Large"
                                    : ResponseT::getReasonForStatus(static_cast<ResponseT::HTTPStatus>(status));
}

}  // namespace

std::string errorText(const HttpError& error)
{
    JsonWriter json;
    json.beginObject().key("error").beginObject().member("reason", error.what());
    if (!error.field.empty()) {
        json.member("field", error.field);
    }
    json.endObject().endObject();
    return json.take();
}

std::string lastAnswer(const HttpError& error)
{
    const std::string body = errorText(error);
    return "HTTP/1.1 " + std::to_string(error.status) + " " + phraseOf(error.status) +
           "\r\nContent-Type: application/json\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n\r\n" + body;
}

void sendError(const HttpError& error, Poco::Net::HTTPServerResponse& to)
{
    to.setStatusAndReason(static_cast<ResponseT::HTTPStatus>(error.status), phraseOf(error.status));
    to.setContentType("application/json");
    const std::string body = errorText(error);
    to.sendBuffer(body.data(), body.size());
}

}  // namespace ZorvNode
