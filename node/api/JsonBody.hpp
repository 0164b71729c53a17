/// The JSON body of a request.
///
/// Failure: HttpError 400.
#pragma once

#include "api/http/HttpMessage.hpp"
#include "json/JsonFields.hpp"

namespace ZorvNode {

using namespace ZorvInput;

constexpr unsigned deepestBody = 16;

/// Parses a body; anything but one JSON value is refused.
void parseBody(const HttpRequest& request, JsonDocumentT& document);

/// Reads a body that is an object; what the reader throws about a field is told as 400.
void readBody(const HttpRequest& request, const std::function<void(JsonFields&)>& reader);

}  // namespace ZorvNode
