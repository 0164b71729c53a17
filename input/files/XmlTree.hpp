/// A small XML document as a tree of elements that know their lines.
///
/// It refuses document type declarations, and with them entities from outside, and nesting deeper than 64 elements.
///
/// Failure: InputError.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ZorvInput {

struct XmlElement {
    std::string name;
    unsigned long line = 0;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text;  ///< of the element itself, as it stands
    std::vector<XmlElement> children;

    /// Null when there is none.
    const std::string* findAttribute(const std::string& attribute) const;
};

constexpr std::size_t deepestXml = 64;

/// Reads a file and answers with its document element.
XmlElement readXml(const std::string& path);

/// The text without white space around it.
std::string trimmed(const std::string& text);

}  // namespace ZorvInput
