#include "config/ApiConfiguration.hpp"

#include <grp.h>

#include <vector>

namespace ZorvNode {

namespace {

using SectionT = SectionReader::SectionT;
using ElementReaderT = SectionReader::ElementReaderT;

constexpr std::size_t groupTextSize = 65536;
constexpr std::uint32_t widestMode = 0666;

std::uint32_t parseMode(const std::string& text)
{
    const bool isOctal = !text.empty() && text.size() <= 4 && text.find_first_not_of("01234567") == std::string::npos;
    const unsigned long mode = isOctal ? std::stoul(text, nullptr, 8) : ~0UL;
    if (mode > widestMode || (mode & ~static_cast<unsigned long>(widestMode)) != 0) {
        throw ValueError("api/socketMode: not an octal number that gives read and write permissions only", text);
    }
    return static_cast<std::uint32_t>(mode);
}

ElementReaderT group(const std::string& what, std::optional<gid_t>& to)
{
    return [=, &to](const XmlElement& element) {
        expectAttributes(element, {});
        const std::string name = trimmed(element.text);
        std::vector<char> text(groupTextSize);
        ::group entry{};
        ::group* found = nullptr;
        if (getgrnam_r(name.c_str(), &entry, text.data(), text.size(), &found) != 0 || found == nullptr) {
            throw ValueError(what + ": no such group", name);
        }
        to = entry.gr_gid;
    };
}

ElementReaderT seconds(const std::string& what, std::chrono::seconds& to)
{
    return [=, &to](const XmlElement& element) {
        constexpr std::uint64_t longest = 3600;
        to = std::chrono::seconds(SectionReader::parseNumber(what, trimmed(element.text), 1, longest));
    };
}

void readTls(const SectionReader& reader, const XmlElement& section, ApiSettings& settings)
{
    TlsSettings tls{"0.0.0.0", 0, "", "", ""};
    reader.read(section, "api/tls/",
                {{"address", [&](const XmlElement& it) { tls.address = trimmed(it.text); }},
                 {"port", SectionReader::number("api/tls/port", tls.port, 1, 65535)},
                 {"certificate", reader.path(tls.certificate)},
                 {"key", reader.path(tls.key)},
                 {"tokens", reader.path(tls.tokens)}});
    for (const auto& [name, isMissing] :
         std::initializer_list<std::pair<const char*, bool>>{{"port", tls.port == 0},
                                                             {"certificate", tls.certificate.empty()},
                                                             {"key", tls.key.empty()},
                                                             {"tokens", tls.tokens.empty()}}) {
        if (isMissing) {
            throw ValueError("element is missing", std::string("api/tls/") + name);
        }
    }
    settings.tls = tls;
}

}  // namespace

void readApi(const SectionReader& reader, const XmlElement& section, ApiSettings& settings)
{
    const auto number = [](const std::string& name, std::size_t& to, std::uint64_t low, std::uint64_t high) {
        return SectionReader::number("api/" + name, to, low, high);
    };
    reader.read(section, "api/",
                {{"socket",
                  [&](const XmlElement& it) {
                      settings.socket = reader.path(it);
                      if (settings.socket.size() > longestSocketPath) {
                          throw ValueError("api/socket: longer than 107 bytes", settings.socket);
                      }
                  }},
                 {"socketMode", [&](const XmlElement& it) { settings.socketMode = parseMode(trimmed(it.text)); }},
                 {"socketGroup", group("api/socketGroup", settings.socketGroup)},
                 {"publishGroup", group("api/publishGroup", settings.permissions.publishGroup)},
                 {"manageGroup", group("api/manageGroup", settings.permissions.manageGroup)},
                 {"connectionBound", number("connectionBound", settings.connectionBound, 1, 10000)},
                 {"streamBound", number("streamBound", settings.streamBound, 0, 10000)},
                 {"headerBound", number("headerBound", settings.headerBound, 1024, 65536)},
                 {"bodyBound", number("bodyBound", settings.bodyBound, 1024, 100000000)},
                 {"batchBound", number("batchBound", settings.batchBound, 1, 100000)},
                 {"streamHistory", number("streamHistory", settings.streamHistory, 1, 1000000)},
                 {"requestSeconds", seconds("api/requestSeconds", settings.requestTime)},
                 {"idleSeconds", seconds("api/idleSeconds", settings.idleTime)},
                 {"tls", [&](const XmlElement& it) { readTls(reader, it, settings); }}});
}

}  // namespace ZorvNode
