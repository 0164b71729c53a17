#include "HttpReader.hpp"

#include <strings.h>

#include <algorithm>
#include <charconv>

namespace ZorvClient {

namespace {

constexpr std::size_t longestHead = std::size_t{64} * 1024;
constexpr std::size_t longestBody = std::size_t{1024} * 1024;

std::string trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    const std::size_t end = text.find_last_not_of(" \t");
    return begin == std::string::npos ? "" : text.substr(begin, end - begin + 1);
}

bool sameName(const std::string& left, const char* right)
{
    return ::strcasecmp(left.c_str(), right) == 0;
}

std::size_t number(const std::string& text, int base)
{
    std::size_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        throw ConnectionLost("not a number: " + text);
    }
    return value;
}

}  // namespace

HttpAnswer HttpReader::read()
{
    HttpAnswer answer;
    Frame frame;
    do {
        answer = HttpAnswer();
        frame = readHead(answer);
    } while (answer.status < 200);

    const bool hasBody = answer.status != 204 && answer.status != 304;
    if (hasBody) {
        readBody(frame, answer.body);
    }
    const bool moreThanAsked = position != buffer.size();
    answer.isLast = answer.isLast || moreThanAsked || (hasBody && frame.length == Length::untilEnd);
    return answer;
}

HttpReader::Frame HttpReader::readHead(HttpAnswer& answer)
{
    readStatus(answer);
    Frame frame;
    for (std::string line = readLine(); !line.empty(); line = readLine()) {
        readField(line, answer, frame);
    }
    return frame;
}

void HttpReader::readStatus(HttpAnswer& answer)
{
    const std::string line = readLine();
    const bool isHttp = line.compare(0, 9, "HTTP/1.1 ") == 0 || line.compare(0, 9, "HTTP/1.0 ") == 0;
    if (!isHttp || line.size() < 12 || (line.size() > 12 && line[12] != ' ')) {
        throw ConnectionLost("not HTTP");
    }
    answer.status = static_cast<int>(number(line.substr(9, 3), 10));
    answer.statusText = line.size() > 13 ? line.substr(13) : "";
    answer.isLast = line[7] == '0';
    if (answer.status < 100) {
        throw ConnectionLost("not an HTTP status");
    }
}

void HttpReader::readField(const std::string& line, HttpAnswer& answer, Frame& frame)
{
    const std::size_t colon = line.find(':');
    const std::string name = line.substr(0, colon);
    if (colon == std::string::npos || name.empty() || name.find_first_of(" \t") != std::string::npos) {
        throw ConnectionLost("not an HTTP field");
    }
    const std::string value = trimmed(line.substr(colon + 1));
    if (sameName(name, "Connection")) {
        answer.isLast = !sameName(value, "keep-alive");
    } else if (sameName(name, "Transfer-Encoding")) {
        if (!sameName(value, "chunked")) {
            throw ConnectionLost("encoded as " + value);
        }
        frame = onlyFrame(frame, {Length::chunked, 0});
    } else if (sameName(name, "Content-Length")) {
        frame = onlyFrame(frame, {Length::known, number(value, 10)});
    }
}

/// An answer that says twice where it ends is not to be trusted.
HttpReader::Frame HttpReader::onlyFrame(const Frame& before, const Frame& frame)
{
    if (before.length != Length::untilEnd) {
        throw ConnectionLost("more than one length");
    }
    return frame;
}

void HttpReader::readBody(const Frame& frame, std::string& body)
{
    switch (frame.length) {
    case Length::known:
        readBytes(frame.bytes, body);
        break;
    case Length::chunked:
        readChunks(body);
        break;
    case Length::untilEnd:
        while (refill()) {
            readBytes(buffer.size() - position, body);
        }
        readBytes(buffer.size() - position, body);
        break;
    }
}

void HttpReader::readChunks(std::string& body)
{
    for (;;) {
        const std::string line = readLine();
        const std::size_t size = number(trimmed(line.substr(0, line.find(';'))), 16);
        if (size == 0) {
            break;
        }
        readBytes(size, body);
        if (!readLine().empty()) {
            throw ConnectionLost("a chunk is longer than it says");
        }
    }
    while (!readLine().empty()) {}
}

std::string HttpReader::readLine()
{
    std::size_t end = buffer.find('\n', position);
    while (end == std::string::npos) {
        if (buffer.size() - position > longestHead || !refill()) {
            throw ConnectionLost("no end of line");
        }
        end = buffer.find('\n', position);
    }
    std::string line = buffer.substr(position, end - position);
    headBytes += line.size();
    if (headBytes > longestHead) {
        throw ConnectionLost("too long");
    }
    position = end + 1;
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

void HttpReader::readBytes(std::size_t count, std::string& body)
{
    if (count > longestBody || body.size() + count > longestBody) {
        throw ConnectionLost("too long");
    }
    while (buffer.size() - position < count) {
        if (!refill()) {
            throw ConnectionLost("ends too early");
        }
    }
    body.append(buffer, position, count);
    position += count;
}

bool HttpReader::refill()
{
    buffer.erase(0, position);
    position = 0;
    char bytes[4096];
    const std::size_t count = socket.receive(bytes, sizeof(bytes), deadline);
    buffer.append(bytes, count);
    return count > 0;
}

}  // namespace ZorvClient
