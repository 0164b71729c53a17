/// Reader of XML configuration files.
///
/// Threads:   an object belongs to one thread.
/// Ownership: the document is the reader's; elements and node lists die with it.
/// Failure:   load throws ZorvException with file, line and reason. Document type declarations and elements nested
///            deeper than 100 are refused: a configuration needs neither, and both can be made to eat the memory.
#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/DOM/Document.h>
#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>

#include <string>

namespace Zorv {

class ZorvConfiguration {
public:
    void load(const std::string& fileName);

    /// All elements of that name, anywhere in the document, in document order. Empty before load.
    Poco::AutoPtr<Poco::XML::NodeList> getElementsByTagName(const std::string& name) const;

    /// The text of the element's first child element of that name, blanks included; empty when there is none.
    static std::string getElementValue(const Poco::XML::Element& element, const std::string& name);

private:
    Poco::AutoPtr<Poco::XML::Document> document;
};

}  // namespace Zorv
