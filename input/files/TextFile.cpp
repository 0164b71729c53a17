#include "files/TextFile.hpp"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "files/InputError.hpp"

namespace ZorvInput {

namespace {

InputError cannotBeRead(const std::string& path)
{
    return InputError(path, "cannot be read: " + std::generic_category().message(errno));
}

}  // namespace

std::string readFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"), &std::fclose);
    if (!file) {
        throw cannotBeRead(path);
    }
    std::string text;
    char block[65536];
    for (std::size_t length = 0; (length = std::fread(block, 1, sizeof(block), file.get())) > 0;) {
        text.append(block, length);
        if (text.size() > longestFile) {
            throw InputError(path, "larger than " + std::to_string(longestFile) + " bytes");
        }
    }
    if (std::ferror(file.get()) != 0) {
        throw cannotBeRead(path);
    }
    return text;
}

}  // namespace ZorvInput
