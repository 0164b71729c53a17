#include "app/Signals.hpp"

#include <initializer_list>

namespace ZorvNode {

Signals::Signals() : mainThread(pthread_self())
{
    sigemptyset(&set);
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGUSR1}) {
        sigaddset(&set, number);
    }
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    signal(SIGPIPE, SIG_IGN);  // a reader of our output that leaves is seen by the write
}

int Signals::wait()
{
    int number = 0;
    while (sigwait(&set, &number) != 0) {}
    return number;
}

void Signals::wake()
{
    pthread_kill(mainThread, SIGUSR1);
}

}  // namespace ZorvNode
