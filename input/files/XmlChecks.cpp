#include "files/XmlChecks.hpp"

#include <algorithm>

namespace ZorvInput {

void expectName(const XmlElement& element, const std::string& name)
{
    if (element.name != name) {
        throw ValueError("not a " + name + " element", element.name);
    }
}

void expectAttributes(const XmlElement& element, std::initializer_list<const char*> known)
{
    for (const auto& [name, value] : element.attributes) {
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw ValueError("unknown attribute of element " + element.name, name);
        }
    }
}

void expectNoText(const XmlElement& element)
{
    const std::string text = trimmed(element.text);
    if (!text.empty()) {
        throw ValueError("text in element " + element.name, text);
    }
}

const std::string& requiredAttribute(const XmlElement& element, const std::string& attribute)
{
    const std::string* value = element.findAttribute(attribute);
    if (value == nullptr) {
        throw ValueError("element " + element.name + " has no attribute", attribute);
    }
    return *value;
}

bool flagAttribute(const XmlElement& element, const std::string& attribute, bool fallback)
{
    const std::string* value = element.findAttribute(attribute);
    if (value == nullptr) {
        return fallback;
    }
    if (*value != "true" && *value != "false") {
        throw ValueError(attribute + ": not true or false", *value);
    }
    return *value == "true";
}

}  // namespace ZorvInput
