/// Sections of a configuration file: tables of elements and what to do with each.
///
/// Threads: one.
/// Failure: InputError with file and line.
#pragma once

#include <Poco/Path.h>

#include <functional>
#include <map>
#include <string>

#include "files/XmlChecks.hpp"

namespace ZorvNode {

using namespace ZorvInput;

class SectionReader {
public:
    using ElementReaderT = std::function<void(const XmlElement&)>;
    using SectionT = std::map<std::string, ElementReaderT>;

    explicit SectionReader(const std::string& path);

    const std::string& getFile() const { return file; }

    /// @param prefix of its elements in messages: "" or "log/". @param repeatable the element that may stand there often.
    void read(const XmlElement& section, const std::string& prefix, const SectionT& known,
              const std::string& repeatable = "") const;

    /// A path, relative to the file's folder.
    std::string path(const XmlElement& element) const;
    ElementReaderT path(std::string& to) const;

    std::string resolve(const std::string& relative) const { return Poco::Path(folder).resolve(relative).toString(); }

    template <class NumberT>
    static ElementReaderT number(const std::string& what, NumberT& to, std::uint64_t low, std::uint64_t high)
    {
        return [=, &to](const XmlElement& element) {
            expectAttributes(element, {});
            to = static_cast<NumberT>(parseNumber(what, trimmed(element.text), low, high));
        };
    }

    template <class ValueT>
    static ElementReaderT choice(const std::string& otherwise, ValueT& to, const std::map<std::string, ValueT>& values)
    {
        return [=, &to](const XmlElement& element) {
            const std::string text = trimmed(element.text);
            const auto found = values.find(text);
            if (found == values.end()) {
                throw ValueError(otherwise, text);
            }
            to = found->second;
        };
    }

    static std::uint64_t parseNumber(const std::string& what, const std::string& text, std::uint64_t low,
                                     std::uint64_t high);

private:
    const std::string file;
    const Poco::Path folder;
};

}  // namespace ZorvNode
