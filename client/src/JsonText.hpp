/// Puts a text as a JSON string behind others, and refuses what is not UTF-8.
///
/// A notification's texts make up all of its work, so this goes straight to the end of the string; only the check of
/// characters beyond ASCII is the library's.
#pragma once

#include <cstddef>
#include <string>

namespace ZorvClient {

/// @param json gets the text in quotes. False when the text is not UTF-8; json is of no use then.
bool appendText(std::string& json, const char* text, std::size_t length);

}  // namespace ZorvClient
