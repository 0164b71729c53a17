/// Texts from anywhere as part of one line: control characters are escaped, so that no text can pass for a line of its own.
#pragma once

#include <string>

namespace ZorvInput {

/// "\n" for a line feed, "\r", "\t", "\x1B" for others; C1 controls and the Unicode line ends, in UTF-8, likewise.
std::string toLineText(const std::string& text);

}  // namespace ZorvInput
