#include "stores/Checkpointer.hpp"

#include <utility>

namespace ZorvNode {

Checkpointer::Checkpointer(const CheckpointSettings& checkpointSettings, std::function<bool()> checkpoint,
                           std::function<void()> prepare)
    : settings(checkpointSettings),
      work(std::move(checkpoint)),
      preparation(std::move(prepare)),
      thread([this] { run(); })
{
}

Checkpointer::~Checkpointer()
{
    {
        const LockT lock(mutex);
        stopping = true;
    }
    wake.notify_one();
    thread.join();
}

void Checkpointer::committed(int pages)
{
    const auto reached = [this, pages](int bound) { return pagesInLog < bound && pages >= bound; };
    LockT lock(mutex);
    const bool isFirst = pagesInLog == 0;
    const bool wakes = isFirst || reached(settings.pages) || reached(settings.urgentPages);
    if (isFirst) {
        oldest = ClockT::now();
    }
    pagesInLog = pages;
    ++commits;
    lock.unlock();
    if (wakes) {
        wake.notify_one();
    }
}

void Checkpointer::run()
{
    LockT lock(mutex);
    for (;;) {
        awaitWork(lock);
        awaitPause(lock);
        if (stopping) {
            return;
        }
        lock.unlock();
        preparation();
        lock.lock();
        pagesInLog = 0;
        lock.unlock();
        const bool done = work();
        lock.lock();
        if (!done) {
            wake.wait_for(lock, settings.retry, [this] { return stopping; });
        }
    }
}

void Checkpointer::awaitWork(LockT& lock)
{
    const auto isGrown = [this] { return stopping || pagesInLog >= settings.pages; };
    wake.wait(lock, [&] { return isGrown() || pagesInLog > 0; });
    wake.wait_until(lock, oldest + settings.age, isGrown);
}

void Checkpointer::awaitPause(LockT& lock)
{
    const auto isOver = [this] { return stopping || pagesInLog >= settings.urgentPages; };
    std::uint64_t seen = 0;
    do {
        seen = commits;
    } while (!wake.wait_for(lock, settings.pause, isOver) && commits != seen);
}

}  // namespace ZorvNode
