#include "services/log/RotatingFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <system_error>
#include <utility>

namespace ZorvNode {

RotatingFile::RotatingFile(const std::string& filePath, const Rotation& fileRotation)
    : path(filePath),
      rotation(fileRotation)
{
}

RotatingFile::~RotatingFile()
{
    close();
}

bool RotatingFile::write(const std::string& text)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto failure = append(text);
    if (!failure) {
        failing = false;
        return true;
    }
    ++numberOfFailures;
    latestLost = text;
    if (!std::exchange(failing, true)) {
        std::cerr << "zorvd: cannot write " << path << ": " << *failure << std::endl;
    }
    return false;
}

bool RotatingFile::tryAgain()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (failing && !append(latestLost)) {
        failing = false;
        --numberOfFailures;
    }
    return !failing;
}

std::optional<std::string> RotatingFile::append(const std::string& text)
{
    if (descriptor >= 0 && size >= rotation.fileSize) {
        putAside();
    }
    if ((descriptor >= 0 || open()) && writeLine(text)) {
        return std::nullopt;
    }
    std::string failure = std::generic_category().message(errno);
    close();
    return failure;
}

/// One that has grown to its size in an earlier life is put aside before the first text.
bool RotatingFile::open()
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
        struct stat status {};
        if (descriptor < 0 || fstat(descriptor, &status) != 0) {
            return false;
        }
        size = static_cast<std::uint64_t>(status.st_size);
        if (size < rotation.fileSize) {
            break;
        }
        if (attempt == 0) {
            putAside();
        }
    }
    return true;
}

void RotatingFile::close()
{
    if (descriptor >= 0) {
        ::close(std::exchange(descriptor, -1));
    }
}

/// A file that cannot be renamed grows on: no text is lost for it.
void RotatingFile::putAside()
{
    close();
    const auto aside = [this](std::uint32_t number) { return path + "." + std::to_string(number); };
    for (std::uint32_t number = rotation.keptFiles; std::remove(aside(number).c_str()) == 0;) {
        ++number;  // of a time when more were kept
    }
    for (std::uint32_t number = rotation.keptFiles - 1; number > 0; --number) {
        std::rename(aside(number - 1).c_str(), aside(number).c_str());
    }
    std::rename(path.c_str(), aside(0).c_str());
}

/// What could only be written in part is taken out again.
bool RotatingFile::writeLine(const std::string& text)
{
    char newline = '\n';
    const std::size_t length = text.size() + 1;
    std::size_t done = 0;
    while (done < length) {
        iovec parts[] = {{const_cast<char*>(text.data()) + done, text.size() - std::min(done, text.size())},
                         {&newline, 1}};
        const ssize_t written = done < text.size() ? writev(descriptor, parts, 2) : ::write(descriptor, &newline, 1);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            const int reason = errno;
            static_cast<void>(ftruncate(descriptor, static_cast<off_t>(size)) == 0);
            errno = reason;
            return false;
        }
        done += static_cast<std::size_t>(written);
    }
    size += length;
    return true;
}

}  // namespace ZorvNode
