/// An input as a file, for what reads files. It lies in memory and leaves nothing behind.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "FuzzTarget.hpp"

namespace ZorvFuzz {

class InputFile {
public:
    InputFile() : descriptor(::memfd_create("input", MFD_CLOEXEC)) { require(descriptor >= 0, "a file can be made"); }
    ~InputFile() { ::close(descriptor); }

    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Takes the place of what was in the file. @return its path
    std::string write(const std::string& text) const
    {
        const bool written = ::ftruncate(descriptor, 0) == 0 &&
                             ::pwrite(descriptor, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
        require(written, "the file can be written");
        return "/proc/self/fd/" + std::to_string(descriptor);
    }

private:
    const int descriptor;
};

}  // namespace ZorvFuzz
