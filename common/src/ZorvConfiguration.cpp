#include "ZorvConfiguration.hpp"

#include <Poco/DOM/DOMParser.h>
#include <Poco/Exception.h>
#include <Poco/FileStream.h>
#include <Poco/SAX/Attributes.h>
#include <Poco/SAX/DefaultHandler.h>
#include <Poco/SAX/InputSource.h>
#include <Poco/SAX/LexicalHandler.h>
#include <Poco/SAX/Locator.h>
#include <Poco/SAX/SAXException.h>
#include <Poco/SAX/SAXParser.h>

#include <istream>
#include <iterator>
#include <sstream>

#include "ZorvException.hpp"

namespace Zorv {
namespace {

constexpr int deepestNesting = 100;

/// Looks a document over without building it, so that a hostile one costs no memory. The first offence is remembered
/// instead of thrown, because the parser underneath is C.
class Inspector : public Poco::XML::DefaultHandler, public Poco::XML::LexicalHandler {
public:
    void setDocumentLocator(const Poco::XML::Locator* newLocator) override { locator = newLocator; }

    void startElement(const Poco::XML::XMLString&, const Poco::XML::XMLString&, const Poco::XML::XMLString&,
                      const Poco::XML::Attributes&) override
    {
        if (++depth > deepestNesting) {
            offend("elements are nested too deep");
        }
    }

    void endElement(const Poco::XML::XMLString&, const Poco::XML::XMLString&, const Poco::XML::XMLString&) override
    {
        --depth;
    }

    void startDTD(const Poco::XML::XMLString&, const Poco::XML::XMLString&, const Poco::XML::XMLString&) override
    {
        offend("a document type declaration is not accepted");
    }

    void endDTD() override {}
    void startEntity(const Poco::XML::XMLString&) override {}
    void endEntity(const Poco::XML::XMLString&) override {}
    void startCDATA() override {}
    void endCDATA() override {}
    void comment(const Poco::XML::XMLChar[], int, int) override {}

    std::string offence;
    int offenceLine = 0;

private:
    void offend(const char* what)
    {
        if (offence.empty()) {
            offence = what;
            offenceLine = locator->getLineNumber();
        }
    }

    const Poco::XML::Locator* locator = nullptr;
    int depth = 0;
};

/// A text that ends at the first offence. There is no other way to stop the parser, which keeps a hundred bytes for each
/// open element.
class InspectedText : public std::stringbuf {
public:
    InspectedText(const std::string& text, const Inspector& itsInspector)
        : std::stringbuf(text),
          inspector(itsInspector)
    {
    }

protected:
    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        return inspector.offence.empty() ? std::stringbuf::xsgetn(to, count) : 0;
    }

private:
    const Inspector& inspector;
};

std::string readFile(const std::string& fileName)
{
    Poco::FileInputStream stream(fileName);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void inspect(const std::string& fileName, const std::string& text)
{
    Inspector inspector;
    InspectedText inspected(text, inspector);
    std::istream stream(&inspected);
    Poco::XML::InputSource source(stream);
    Poco::XML::SAXParser parser;
    parser.setContentHandler(&inspector);
    parser.setProperty(Poco::XML::XMLReader::PROPERTY_LEXICAL_HANDLER,
                       static_cast<Poco::XML::LexicalHandler*>(&inspector));
    std::string offence;
    int line = 0;
    try {
        parser.parse(&source);
    } catch (const Poco::XML::SAXParseException& e) {
        offence = e.message();
        line = e.getLineNumber();
    }
    if (!inspector.offence.empty()) {
        offence = inspector.offence;
        line = inspector.offenceLine;
    }
    if (!offence.empty()) {
        throw ZorvException("%s:%d: %s", fileName.c_str(), line, offence.c_str());
    }
}

}  // namespace

void ZorvConfiguration::load(const std::string& fileName)
{
    try {
        const std::string text = readFile(fileName);
        inspect(fileName, text);
        Poco::XML::DOMParser parser;
        document = parser.parseMemory(text.data(), text.size());
    } catch (const Poco::Exception& e) {
        throw ZorvException("%s: %s", fileName.c_str(), e.displayText().c_str());
    }
}

Poco::AutoPtr<Poco::XML::NodeList> ZorvConfiguration::getElementsByTagName(const std::string& name) const
{
    static const Poco::AutoPtr<Poco::XML::Document> emptyDocument(new Poco::XML::Document);
    return (document.isNull() ? emptyDocument : document)->getElementsByTagName(name);
}

std::string ZorvConfiguration::getElementValue(const Poco::XML::Element& element, const std::string& name)
{
    const Poco::XML::Element* child = element.getChildElement(name);
    return child == nullptr ? std::string() : child->innerText();
}

}  // namespace Zorv
