/// Texts of any origin as valid UTF-8 for JSON.
#pragma once

#include <string>

namespace ZorvInput {

bool isUtf8(const std::string& text);

/// The text itself when it is valid UTF-8; otherwise each byte that is not stands as U+FFFD.
std::string toUtf8(const std::string& text);

}  // namespace ZorvInput
