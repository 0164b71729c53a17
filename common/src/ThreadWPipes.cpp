#include "ThreadWPipes.hpp"

#include <Poco/Thread.h>
#include <fcntl.h>
#include <sys/select.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <memory>

#include "ZorvException.hpp"

namespace Zorv {
namespace {

Poco::FastMutex registryMutex;
std::map<const Poco::Thread*, ThreadWPipes*> registry;  // guarded by registryMutex

}  // namespace

ThreadWPipes::ThreadWPipes(const Poco::Thread& thread) : worker(&thread)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        throw ZorvException("Could not create the input pipe: %s", std::strerror(errno));
    }
    readFd = ends[0];
    writeFd = ends[1];
    if (readFd >= FD_SETSIZE) {
        close(readFd);
        close(writeFd);
        throw ZorvException("Could not create the input pipe: descriptor %d is beyond the reach of select", readFd);
    }
    const Poco::FastMutex::ScopedLock lock(registryMutex);
    registry[worker] = this;
}

ThreadWPipes::~ThreadWPipes()
{
    {
        const Poco::FastMutex::ScopedLock lock(registryMutex);
        registry.erase(worker);
    }
    close(readFd);
    close(writeFd);
    for (const PipeMessage* message : messages) {
        delete message;
    }
}

ThreadWPipes* ThreadWPipes::current()
{
    const Poco::FastMutex::ScopedLock lock(registryMutex);
    const auto entry = registry.find(Poco::Thread::current());
    return entry == registry.end() ? nullptr : entry->second;
}

void ThreadWPipes::pushToInput(PipeMessage* message)
{
    std::unique_ptr<PipeMessage> owned(message);
    const Poco::FastMutex::ScopedLock lock(mutex);
    const bool wasEmpty = messages.empty();
    messages.push_back(nullptr);
    messages.back() = owned.release();
    if (wasEmpty) {
        // One byte at most stands in the pipe, so the write neither blocks nor fails.
        const char signal = 1;
        while (write(writeFd, &signal, 1) < 0 && errno == EINTR) {}
    }
}

std::deque<PipeMessage*> ThreadWPipes::popFromInput()
{
    std::deque<PipeMessage*> popped;
    const Poco::FastMutex::ScopedLock lock(mutex);
    if (!messages.empty()) {
        char signal = 0;
        while (read(readFd, &signal, 1) < 0 && errno == EINTR) {}
        popped.swap(messages);
    }
    return popped;
}

}  // namespace Zorv
