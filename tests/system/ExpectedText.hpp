/// What a test expects as a whole: the files in expected/.
#pragma once

#include <string>

namespace ZorvTest {

std::string readFile(const std::string& path);

std::string expectedPath(const std::string& name);

/// Expects the text of a file in expected/; a text that differs is left in the build folder, for diff.
void expectText(const std::string& name, const std::string& actual);

}  // namespace ZorvTest
