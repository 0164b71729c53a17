#include "HttpConnection.hpp"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <stdexcept>

namespace ZorvBench {

namespace {

constexpr std::size_t bufferSize = std::size_t{256} * 1024;

/// A number at the beginning of the text.
std::size_t numberOf(std::string_view text, int base)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::size_t number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number, base).ec != std::errc()) {
        throw std::runtime_error("an answer that is not HTTP: not a number: " + std::string(text));
    }
    return number;
}

/// @return whether the line is this field; then the line is left with its value.
bool takeField(std::string_view& line, std::string_view name)
{
    if (line.size() <= name.size() || line[name.size()] != ':' ||
        ::strncasecmp(line.data(), name.data(), name.size()) != 0) {
        return false;
    }
    line.remove_prefix(name.size() + 1);
    return true;
}

}  // namespace

HttpConnection::HttpConnection(const Address& address) : socket(address), buffer(bufferSize)
{
}

int HttpConnection::exchange(std::string_view request)
{
    socket.send(request);
    content.clear();
    const Head head = readHead();
    if (head.chunked) {
        readChunks();
    } else {
        readBytes(head.length);
    }
    return head.status;
}

HttpConnection::Head HttpConnection::readHead()
{
    Head head;
    std::string_view line = readLine();
    if (line.size() < 12 || line.substr(0, 9) != "HTTP/1.1 ") {
        throw std::runtime_error("an answer that is not HTTP/1.1: " + std::string(line));
    }
    head.status = static_cast<int>(numberOf(line.substr(9), 10));
    for (line = readLine(); !line.empty(); line = readLine()) {
        if (takeField(line, "Content-Length")) {
            head.length = numberOf(line, 10);
        } else if (takeField(line, "Transfer-Encoding")) {
            head.chunked = line.find("chunked") != std::string_view::npos;
        }
    }
    return head;
}

void HttpConnection::readChunks()
{
    for (std::size_t size = numberOf(readLine(), 16); size > 0; size = numberOf(readLine(), 16)) {
        readBytes(size);
        readLine();
    }
    while (!readLine().empty()) {}
}

void HttpConnection::readBytes(std::size_t count)
{
    while (count > 0) {
        if (begin == end) {
            refill();
        }
        const std::size_t part = std::min(count, end - begin);
        content.append(buffer.data() + begin, part);
        begin += part;
        count -= part;
    }
}

/// Without its end; valid until the next call that reads.
std::string_view HttpConnection::readLine()
{
    for (;;) {
        const auto rest = std::string_view(buffer.data() + begin, end - begin);
        const std::size_t length = rest.find("\r\n");
        if (length != std::string_view::npos) {
            begin += length + 2;
            return rest.substr(0, length);
        }
        refill();
    }
}

void HttpConnection::refill()
{
    std::memmove(buffer.data(), buffer.data() + begin, end - begin);
    end -= begin;
    begin = 0;
    const std::size_t count = socket.receive(buffer.data() + end, buffer.size() - end);
    if (count == 0) {
        throw std::runtime_error("the server has closed the connection");
    }
    end += count;
}

}  // namespace ZorvBench
