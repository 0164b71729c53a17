#include "config/SectionReader.hpp"

#include <set>

#include "files/Number.hpp"

namespace ZorvNode {

SectionReader::SectionReader(const std::string& path) : file(path), folder(Poco::Path(path).makeAbsolute().makeParent())
{
}

void SectionReader::read(const XmlElement& section, const std::string& prefix, const SectionT& known,
                         const std::string& repeatable) const
{
    expectAttributes(section, {});
    expectNoText(section);
    std::set<std::string> seen;
    for (const XmlElement& element : section.children) {
        at(file, element, [&] {
            const auto found = known.find(element.name);
            if (found == known.end()) {
                throw ValueError("unknown element", prefix + element.name);
            }
            if (!seen.insert(element.name).second && element.name != repeatable) {
                throw ValueError("element appears twice", prefix + element.name);
            }
            found->second(element);
        });
    }
}

std::string SectionReader::path(const XmlElement& element) const
{
    const std::string text = trimmed(element.text);
    if (text.empty()) {
        throw ValueError(element.name + ": no path", text);
    }
    return resolve(text);
}

SectionReader::ElementReaderT SectionReader::path(std::string& to) const
{
    return [this, &to](const XmlElement& element) { to = path(element); };
}

std::uint64_t SectionReader::parseNumber(const std::string& what, const std::string& text, std::uint64_t low,
                                         std::uint64_t high)
{
    std::uint64_t number = 0;
    if (!parseUnsigned(text, number) || number < low || number > high) {
        throw ValueError(what + ": not a number from " + std::to_string(low) + " to " + std::to_string(high), text);
    }
    return number;
}

}  // namespace ZorvNode
