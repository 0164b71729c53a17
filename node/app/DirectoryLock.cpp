#include "app/DirectoryLock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace ZorvNode {

namespace {

constexpr mode_t ownerOnly = 0700;
const std::string otherDirectory = "name another directory in the configuration";

/// What the holder has written, as far as it is a number.
std::string holderOf(int descriptor)
{
    std::array<char, 16> text{};
    const ssize_t length = pread(descriptor, text.data(), text.size(), 0);
    const std::string content(text.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return content.substr(0, content.find_first_not_of("0123456789"));
}

/// The node that held the lock removes the file at its end, perhaps after we have opened it.
bool isStill(const std::string& path, int descriptor)
{
    struct stat named {};
    struct stat opened {};
    return stat(path.c_str(), &named) == 0 && fstat(descriptor, &opened) == 0 && named.st_ino == opened.st_ino &&
           named.st_dev == opened.st_dev;
}

}  // namespace

DirectoryLock::DirectoryLock(const std::string& lockedDirectory, const std::string& file)
    : directory(lockedDirectory),
      path(lockedDirectory + "/" + file),
      descriptor(open())
{
}

DirectoryLock::~DirectoryLock()
{
    unlink(path.c_str());
    close(descriptor);
}

int DirectoryLock::open() const
{
    for (;;) {
        const int opened = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0640);
        if (opened < 0) {
            throw std::runtime_error(failure("opened"));
        }
        try {
            lock(opened);
        } catch (const std::runtime_error&) {
            close(opened);
            throw;
        }
        if (isStill(path, opened)) {
            return opened;
        }
        close(opened);
    }
}

void DirectoryLock::lock(int opened) const
{
    if (flock(opened, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK) {
            throw std::runtime_error(failure("locked"));
        }
        const std::string holder = holderOf(opened);
        throw std::runtime_error(directory + ": another node" + (holder.empty() ? "" : ", process " + holder + ",") +
                                 " runs in this directory; stop it or " + otherDirectory);
    }
    const std::string number = std::to_string(getpid()) + "\n";
    if (ftruncate(opened, 0) != 0 ||
        write(opened, number.data(), number.size()) != static_cast<ssize_t>(number.size())) {
        throw std::runtime_error(failure("written"));
    }
}

std::string DirectoryLock::failure(const std::string& what) const
{
    return path + ": cannot be " + what + ": " + std::generic_category().message(errno) + "; make it possible or " +
           otherDirectory;
}

void makePrivateDirectory(const std::string& directory)
{
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(directory).parent_path(), error);
    if (!error && mkdir(directory.c_str(), ownerOnly) != 0 && errno != EEXIST) {
        error.assign(errno, std::generic_category());
    }
    if (error) {
        throw std::runtime_error(directory + ": cannot be made: " + error.message() + "; make it possible or " +
                                 otherDirectory);
    }
}

}  // namespace ZorvNode
