/// JSON from outside: valid UTF-8, a bounded depth, one value.
///
/// Failure: ValueError.
#pragma once

#include <rapidjson/document.h>

#include <string>

namespace ZorvInput {

using JsonT = rapidjson::Value;
using JsonDocumentT = rapidjson::Document;

/// Parses one value. @param deepest levels of arrays and objects.
void parseJson(const std::string& text, unsigned deepest, JsonDocumentT& document);

/// The value as it would stand in a file; a text without its quotes.
std::string jsonText(const JsonT& value);

}  // namespace ZorvInput
