#include "runtime/StorageWatch.hpp"

#include <utility>

namespace ZorvNode {

StorageWatch::StorageWatch(std::vector<Storage> storages, TellT tellOthers, std::chrono::milliseconds retry)
    : tell(std::move(tellOthers)),
      interval(retry)
{
    for (Storage& storage : storages) {
        all.push_back({std::move(storage), Told::nothing});
    }
    thread = std::thread([this] { run(); });
}

StorageWatch::~StorageWatch()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
        change.notify_all();
    }
    thread.join();
}

void StorageWatch::wake()
{
    const std::lock_guard<std::mutex> lock(mutex);
    woken = true;
    change.notify_all();
}

void StorageWatch::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    for (bool isSettled = true; !stopping;) {
        if (isSettled) {
            change.wait(lock, [this] { return stopping || woken; });
        } else {
            change.wait_for(lock, interval, [this] { return stopping; });
        }
        woken = false;
        if (stopping) {
            return;
        }
        lock.unlock();
        isSettled = true;
        for (Watched& watched : all) {
            isSettled = settle(watched) && isSettled;
        }
        lock.lock();
    }
}

/// True when the storage works, and that is known.
bool StorageWatch::settle(Watched& watched) const
{
    const Told now = watched.storage.tryAgain() ? Told::works : Told::fails;
    try {
        if (watched.told != now) {
            tell(watched.storage, now == Told::fails);
            watched.told = now;
        }
    } catch (const std::exception&) {
        return false;
    }
    return now == Told::works;
}

}  // namespace ZorvNode
