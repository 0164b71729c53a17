#include "files/XmlTree.hpp"

#include <Poco/SAX/Attributes.h>
#include <Poco/SAX/DefaultHandler.h>
#include <Poco/SAX/InputSource.h>
#include <Poco/SAX/LexicalHandler.h>
#include <Poco/SAX/Locator.h>
#include <Poco/SAX/SAXException.h>
#include <Poco/SAX/SAXParser.h>
#include <Poco/String.h>

#include <istream>
#include <optional>
#include <sstream>

#include "files/InputError.hpp"
#include "files/TextFile.hpp"

namespace ZorvInput {

namespace {

/// Builds the tree. The parser is C code that exceptions must not cross: the first error is kept, and the rest passed over.
class TreeBuilder : public Poco::XML::DefaultHandler, public Poco::XML::LexicalHandler {
public:
    explicit TreeBuilder(const std::string& path) : file(path) {}

    /// The finished document element. Throws what went wrong on the way.
    XmlElement take()
    {
        if (error) {
            throw InputError(*error);
        }
        return std::move(root.children.front());
    }

    bool hasFailed() const { return error.has_value(); }

    void setDocumentLocator(const Poco::XML::Locator* documentLocator) override { locator = documentLocator; }

    void startElement(const Poco::XML::XMLString&, const Poco::XML::XMLString&, const Poco::XML::XMLString& name,
                      const Poco::XML::Attributes& attributes) override
    {
        if (open.size() > deepestXml) {
            fail(ValueError("elements nested deeper than " + std::to_string(deepestXml), name));
        }
        if (error) {
            return;
        }
        XmlElement& element = open.back()->children.emplace_back();
        element.name = name;
        element.line = line();
        for (int index = 0; index < attributes.getLength(); ++index) {
            element.attributes.emplace_back(attributes.getQName(index), attributes.getValue(index));
        }
        open.push_back(&element);
    }

    void endElement(const Poco::XML::XMLString&, const Poco::XML::XMLString&, const Poco::XML::XMLString&) override
    {
        if (!error) {
            open.pop_back();
        }
    }

    void characters(const Poco::XML::XMLChar text[], int start, int length) override
    {
        if (!error) {
            open.back()->text.append(text + start, static_cast<std::size_t>(length));
        }
    }

    void startDTD(const Poco::XML::XMLString& name, const Poco::XML::XMLString&, const Poco::XML::XMLString&) override
    {
        fail(ValueError("document type declarations are refused", name));
    }

    void endDTD() override {}
    void startEntity(const Poco::XML::XMLString&) override {}
    void endEntity(const Poco::XML::XMLString&) override {}
    void startCDATA() override {}
    void endCDATA() override {}
    void comment(const Poco::XML::XMLChar[], int, int) override {}

private:
    unsigned long line() const { return static_cast<unsigned long>(locator->getLineNumber()); }

    void fail(const ValueError& what)
    {
        if (!error) {
            error.emplace(file, line(), what);
        }
    }

    const std::string file;
    const Poco::XML::Locator* locator = nullptr;  // the parser's
    XmlElement root;                              // above the document element
    std::vector<XmlElement*> open{&root};         // an element is finished before its next sibling begins
    std::optional<InputError> error;
};

/// A document that ends as soon as its builder has failed. There is no other way to stop the parser, which keeps a hundred
/// bytes for each open element.
class Document : public std::stringbuf {
public:
    Document(const std::string& text, const TreeBuilder& treeBuilder) : std::stringbuf(text), builder(treeBuilder) {}

protected:
    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        return builder.hasFailed() ? 0 : std::stringbuf::xsgetn(to, count);
    }

private:
    const TreeBuilder& builder;
};

/// The parser's message names the line once more.
std::string withoutPlace(const std::string& message)
{
    return message.substr(0, message.find(" in line "));
}

}  // namespace

const std::string* XmlElement::findAttribute(const std::string& attribute) const
{
    for (const auto& [key, value] : attributes) {
        if (key == attribute) {
            return &value;
        }
    }
    return nullptr;
}

XmlElement readXml(const std::string& path)
{
    TreeBuilder builder(path);
    Document document(readFile(path), builder);
    std::istream stream(&document);
    Poco::XML::InputSource source(stream);
    Poco::XML::SAXParser parser;
    parser.setFeature(Poco::XML::XMLReader::FEATURE_NAMESPACES, false);
    parser.setFeature(Poco::XML::XMLReader::FEATURE_EXTERNAL_GENERAL_ENTITIES, false);
    parser.setFeature(Poco::XML::XMLReader::FEATURE_EXTERNAL_PARAMETER_ENTITIES, false);
    parser.setContentHandler(&builder);
    parser.setProperty(Poco::XML::XMLReader::PROPERTY_LEXICAL_HANDLER,
                       static_cast<Poco::XML::LexicalHandler*>(&builder));
    try {
        parser.parse(&source);
    } catch (const Poco::XML::SAXParseException& e) {
        if (!builder.hasFailed()) {
            throw InputError(path, static_cast<unsigned long>(e.getLineNumber()),
                             ValueError("not well-formed XML: " + withoutPlace(e.message())));
        }
    } catch (const Poco::Exception& e) {
        throw InputError(path, "not well-formed XML: " + e.message());
    }
    return builder.take();
}

std::string trimmed(const std::string& text)
{
    return Poco::trim(text);
}

}  // namespace ZorvInput
