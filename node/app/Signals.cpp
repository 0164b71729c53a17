#include "app/Signals.hpp"

#include <cerrno>
#include <initializer_list>

namespace ZorvNode {

Signals::Signals()
{
    sigemptyset(&set);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&set, number);
    }
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    signal(SIGPIPE, SIG_IGN);  // a reader of our output that leaves is seen by the write
    signal(SIGXFSZ, SIG_IGN);  // likewise a file that has reached the size it may have
}

int Signals::wait(const std::optional<std::chrono::microseconds>& patience)
{
    timespec time{};
    if (patience) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*patience);
        time.tv_sec = seconds.count();
        time.tv_nsec = std::chrono::nanoseconds(*patience - seconds).count();
    }
    for (;;) {
        const int number = patience ? sigtimedwait(&set, nullptr, &time) : sigwaitinfo(&set, nullptr);
        if (number > 0) {
            return number;
        }
        if (errno == EAGAIN) {
            return 0;
        }
    }
}

}  // namespace ZorvNode
