#include "api/JsonBody.hpp"

namespace ZorvNode {

void parseBody(const HttpRequest& request, JsonDocumentT& document)
{
    try {
        parseJson(request.body, deepestBody, document);
    } catch (const ValueError& e) {
        throw HttpError(400, e.what());
    }
}

void readBody(const HttpRequest& request, const std::function<void(JsonFields&)>& reader)
{
    JsonDocumentT document;
    parseBody(request, document);
    if (!document.IsObject()) {
        throw HttpError(400, "the body is not a JSON object");
    }
    JsonFields fields(document);
    try {
        reader(fields);
        fields.expectNoOther();
    } catch (const FieldError& e) {
        throw HttpError(400, e.getReason(), e.getField());
    }
}

}  // namespace ZorvNode
