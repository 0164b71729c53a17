/// Checks that readers of XML files share.
#pragma once

#include <initializer_list>
#include <string>

#include "files/InputError.hpp"
#include "files/XmlTree.hpp"

namespace ZorvInput {

/// Runs a check and gives its ValueError the element's place.
template <class CheckT>
auto at(const std::string& file, const XmlElement& element, CheckT check) -> decltype(check())
{
    try {
        return check();
    } catch (const ValueError& e) {
        throw InputError(file, element.line, e);
    }
}

/// Throws ValueError unless the element has this name.
void expectName(const XmlElement& element, const std::string& name);

/// Throws ValueError when the element has an attribute that is not among these.
void expectAttributes(const XmlElement& element, std::initializer_list<const char*> known);

/// Throws ValueError when there is text between the children of the element.
void expectNoText(const XmlElement& element);

/// The attribute's value; throws ValueError when it is missing.
const std::string& requiredAttribute(const XmlElement& element, const std::string& attribute);

/// "true" or "false".
bool flagAttribute(const XmlElement& element, const std::string& attribute, bool fallback);

}  // namespace ZorvInput
