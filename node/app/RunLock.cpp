#include "app/RunLock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace ZorvNode {

namespace {

std::string reason()
{
    return std::generic_category().message(errno);
}

}  // namespace

RunLock::RunLock(const std::string& runDirectory)
    : path(runDirectory + "/zorvd.pid"),
      descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0640))
{
    if (descriptor < 0) {
        throw std::runtime_error(path + ": cannot be opened: " + reason());
    }
    const std::string number = std::to_string(getpid()) + "\n";
    std::string failure;
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        failure = errno == EWOULDBLOCK ? "another node runs in this directory" : "cannot be locked: " + reason();
    } else if (ftruncate(descriptor, 0) != 0 ||
               write(descriptor, number.data(), number.size()) != static_cast<ssize_t>(number.size())) {
        failure = "cannot be written: " + reason();
    }
    if (!failure.empty()) {
        close(descriptor);
        throw std::runtime_error(path + ": " + failure);
    }
}

RunLock::~RunLock()
{
    unlink(path.c_str());
    close(descriptor);
}

}  // namespace ZorvNode
