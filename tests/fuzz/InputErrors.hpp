/// What every refusal of a file promises: one line that begins with the file's name.
#pragma once

#include <string>

#include "FuzzTarget.hpp"
#include "files/InputError.hpp"
#include "files/LineText.hpp"

namespace ZorvFuzz {

inline void requireOneLine(const ZorvInput::InputError& error, const std::string& path)
{
    const std::string line = error.what();
    require(line.compare(0, path.size() + 1, path + ":") == 0, "a refusal begins with the file's name");
    requireEqual(ZorvInput::toLineText(line), line, "a refusal is one line");
}

}  // namespace ZorvFuzz
