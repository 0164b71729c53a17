#include "commands/ModelHints.hpp"

namespace ZorvCtl {

namespace {

struct Hint {
    const char* error;  ///< stands in the reader's line
    const char* hint;
};

/// The first one that fits counts.
constexpr Hint hints[] = {
    {"cannot be read", "check the path, and who may read the file"},
    {"larger than", "split it: a node needs only its own types, classes and objects"},
    {"not well-formed XML", "close every element, quote every attribute, and write &amp; for & and &lt; for <"},
    {"nested deeper", "an object may also stand at the top, with its whole distinguished name as dn"},
    {"document type declarations", "delete the <!DOCTYPE ...>; entities are not needed"},
    {"not a ZorvModel element", "the outermost element is <ZorvModel>"},
    {"unknown attribute of element",
     "look the element up in the model format: it may be misspelt, or belong elsewhere"},
    {": element ", "add the attribute to the element"},
    {"unknown element", "at this place stand enum, struct, class and object, or attribute and member inside them"},
    {"text in element", "put values between the tags of an attribute's own element"},
    {"name: not letters", "use letters, digits and \"_\", and begin with a letter"},
    {"name: not allowed for an attribute", "\"object\" is taken by the element for objects; choose another name"},
    {"min and max are for numbers", "delete min and max, or make the type a number such as uint32"},
    {"min is above max", "exchange them"},
    {"enumeration has no members", "add <member name=\"...\" value=\"...\"/>"},
    {"structure has no members", "add <attribute name=\"...\" type=\"...\"/>"},
    {"value: not a 32-bit number", "give the member a number from -2147483648 to 2147483647"},
    {"value is taken by another member", "give every member a number of its own"},
    {"member exists already", "give every member a name of its own"},
    {"member has a value already", "a structure's member stands once in each value"},
    {"parent: unknown class", "declare the parent class before this one, or correct its name"},
    {"parent: no class", "name at least one class, or leave parent out for objects at the root"},
    {"class exists already", "a class is declared once; move its attributes together"},
    {"type exists already", "an enumeration or structure is declared once; choose another name"},
    {"attribute exists already", "an attribute is declared once in its class"},
    {"attribute has a value already", "give one element only, or declare the attribute with sequence=\"true\""},
    {"default is not for", "delete the default, and give the value in the objects"},
    {"unknown type", "use a built-in type, or declare the enumeration or structure before the class"},
    {"unknown class", "declare the class before its objects, or correct the name before the \"=\""},
    {"dn: not \"Class=value\"", "write dn=\"Class=value\"; the value has no \",\" and no \"=\""},
    {"objects of this class are component", "delete the object: the component makes it itself"},
    {"no parent object", "put the object inside its parent's element, or write the parent before it"},
    {"is not contained in class", "name the parent's class in the class's parent attribute"},
    {"object exists already", "an object is written once; put its values together"},
    {"has no attribute", "correct the name, or add the attribute"},
    {"has no member", "correct the name, or add the member to the structure"},
    {"elements in the value", "write the value as text; only structures have elements in them"},
    {"object has no value for attribute", "add the element, or declare the attribute without mandatory=\"true\""},
    {"value out of range", "choose a value within the bounds, or widen min and max in the class"},
    {"not a member of", "write the name of a member, or its number"},
    {"not true or false", "write true or false"},
    {"not a ", "write a number in base ten, without blanks"},
};

}  // namespace

std::string modelHint(const std::string& error)
{
    for (const Hint& hint : hints) {
        if (error.find(hint.error) != std::string::npos) {
            return hint.hint;
        }
    }
    return "compare with the model format and the example model";
}

}  // namespace ZorvCtl
