#include "commands/ObjectValues.hpp"

#include <cstring>

#include "JsonAccess.hpp"
#include "commands/Arguments.hpp"
#include "files/InputError.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

constexpr unsigned deepestValue = 16;

/// The same text; throws ValueError when it is no JSON value.
const std::string& checkedJson(const std::string& text)
{
    JsonDocumentT document;
    parseJson(text, deepestValue, document);
    return text;
}

bool isJson(const std::string& text)
{
    try {
        checkedJson(text);
        return true;
    } catch (const ValueError&) {
        return false;
    }
}

bool isText(const std::string& value, const JsonT* present)
{
    const bool beginsLikeJson = !value.empty() && std::strchr("[{\"", value.front()) != nullptr;
    const bool wasText = present != nullptr && present->IsString();
    return !beginsLikeJson && ((wasText && value != "null") || !isJson(value));
}

}  // namespace

std::string attributesJson(const std::vector<std::string>& pairs, const JsonT& present)
{
    JsonWriter json;
    json.beginObject();
    for (const std::string& pair : pairs) {
        const auto [name, value] = parsePair(pair);
        json.key(name);
        try {
            isText(value, find(present, name.c_str())) ? json.value(value) : json.raw(checkedJson(value));
        } catch (const ValueError& e) {
            throw ValueError(name + ": " + e.what());
        }
    }
    return json.endObject().take();
}

}  // namespace ZorvCtl
