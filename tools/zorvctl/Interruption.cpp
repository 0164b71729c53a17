#include "Interruption.hpp"

#include <Poco/Net/SocketImpl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Failure.hpp"

namespace ZorvCtl {

void Interruption::interrupt()
{
    const std::lock_guard<std::mutex> lock(mutex);
    isInterrupted = true;
    for (const int file : files) {
        ::shutdown(file, SHUT_RDWR);
    }
    changed.notify_all();
}

bool Interruption::happened() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return isInterrupted;
}

void Interruption::waitUntil(ClockT::time_point time)
{
    std::unique_lock<std::mutex> lock(mutex);
    if (changed.wait_until(lock, time, [this] { return isInterrupted; })) {
        throw Interrupted();
    }
}

Interruption::Watch::Watch(Interruption& theInterruption, const Poco::Net::StreamSocket& socket)
    : interruption(theInterruption),
      file(socket.impl()->sockfd())
{
    const std::lock_guard<std::mutex> lock(interruption.mutex);
    interruption.files.insert(file);
    if (interruption.isInterrupted) {
        ::shutdown(file, SHUT_RDWR);
    }
}

Interruption::Watch::~Watch()
{
    const std::lock_guard<std::mutex> lock(interruption.mutex);
    interruption.files.erase(interruption.files.find(file));
}

CtrlC::CtrlC(Interruption& theInterruption)
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    thread = std::thread([&theInterruption, set] {
        for (int number = 0; sigwait(&set, &number) == 0 && number == SIGINT;) {
            if (theInterruption.happened()) {
                ::_exit(interrupted);
            }
            theInterruption.interrupt();
        }
    });
}

CtrlC::~CtrlC()
{
    pthread_kill(thread.native_handle(), SIGUSR1);
    thread.join();
}

}  // namespace ZorvCtl
