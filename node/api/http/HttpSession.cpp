#include "api/http/HttpSession.hpp"

#include <Poco/String.h>

#include <algorithm>
#include <utility>

namespace ZorvNode {

namespace {

constexpr std::size_t longestLength = 18;  // digits
constexpr std::size_t longestChunkSize = 8;
constexpr std::size_t longestLine = 8192;
const char* const chunked = "chunked";

/// A reference of the session's own, which it lets go at its end.
Poco::Net::StreamSocket referTo(BoundedSocket& socket)
{
    socket.duplicate();
    return Poco::Net::StreamSocket(&socket);
}

HttpError tooLarge(std::size_t bound)
{
    return HttpError(413, "the body is larger than " + std::to_string(bound) + " bytes");
}

}  // namespace

HttpSession::HttpSession(BoundedSocket& boundedSocket, Poco::Net::HTTPServerParams::Ptr params)
    : HTTPServerSession(referTo(boundedSocket), std::move(params)),
      bounded(boundedSocket)
{
}

std::string HttpSession::readBody(const Poco::Net::HTTPServerRequest& from, const ApiSettings& settings)
{
    const std::size_t bound = settings.bodyBound;
    try {
        bounded.allow(2 * bound + settings.headerBound, settings.requestTime);  // chunks have heads
        return from.hasContentLength() ? readPiece(static_cast<std::size_t>(from.getContentLength64()))
                                       : readChunks(bound);
    } catch (const Poco::Exception&) {
        switch (bounded.getRefusal()) {
        case Refusal::tooLarge:
            throw tooLarge(bound);
        case Refusal::tooSlow:
            throw HttpError(408, "the request did not arrive in time");
        default:
            throw;
        }
    }
}

std::string HttpSession::readPiece(std::size_t length)
{
    std::string piece(length, '\0');
    std::size_t position = 0;
    while (position < length) {
        const int received = read(&piece[position], static_cast<std::streamsize>(length - position));
        if (received <= 0) {
            throw HttpError(400, "the body ends too early");
        }
        position += static_cast<std::size_t>(received);
    }
    return piece;
}

std::string HttpSession::readChunks(std::size_t bound)
{
    std::string body;
    while (const std::size_t size = readChunkSize()) {
        if (size > bound - body.size()) {
            throw tooLarge(bound);
        }
        body += readPiece(size);
        if (!readLine().empty()) {
            throw HttpError(400, "a chunk of the body is longer than its size");
        }
    }
    while (!readLine().empty()) {
        // fields behind the body tell nothing that is needed
    }
    return body;
}

std::size_t HttpSession::readChunkSize()
{
    std::string line = readLine();
    const std::string size = Poco::trim(line.substr(0, line.find(';')));
    if (size.empty() || size.size() > longestChunkSize ||
        size.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        throw HttpError(400, "a chunk of the body has no size");
    }
    return std::stoul(size, nullptr, 16);
}

std::string HttpSession::readLine()
{
    std::string line;
    for (int character = get(); character != '\n'; character = get()) {
        if (character == std::char_traits<char>::eof() || line.size() == longestLine) {
            throw HttpError(400, "the body ends too early");
        }
        line += static_cast<char>(character);
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

bool hasBody(const Poco::Net::HTTPServerRequest& from)
{
    const auto lengths = std::count_if(from.begin(), from.end(), [](const auto& field) {
        return Poco::icompare(field.first, Poco::Net::HTTPMessage::CONTENT_LENGTH) == 0;
    });
    const std::string length = from.get(Poco::Net::HTTPMessage::CONTENT_LENGTH, "0");
    if (lengths > 1 || length.empty() || length.size() > longestLength ||
        length.find_first_not_of("0123456789") != std::string::npos) {
        throw HttpError(400, "not one Content-Length");
    }
    if (from.has(Poco::Net::HTTPMessage::TRANSFER_ENCODING)) {
        if (lengths != 0 || Poco::icompare(from.get(Poco::Net::HTTPMessage::TRANSFER_ENCODING), chunked) != 0) {
            throw HttpError(400, "a Transfer-Encoding other than chunked alone");
        }
        return true;
    }
    return length.find_first_not_of('0') != std::string::npos;
}

}  // namespace ZorvNode
