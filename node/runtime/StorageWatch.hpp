/// Watches what the node writes to its disk: has it try again while it fails, and tells when that begins and ends.
///
/// Threads:   one of its own, which sleeps while everything works; wake from any thread.
/// Ownership: the storages outlive it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ZorvNode {

struct Storage {
    std::string name;                ///< "state"
    std::string trouble;             ///< what it means for people that it cannot be written
    std::function<bool()> tryAgain;  ///< writes what is left to be written; whether it works
};

class StorageWatch {
public:
    /// @param isFailing told false at the start, true when a storage fails and false when it works again. What it throws
    ///        is taken as a wish to be told again.
    using TellT = std::function<void(const Storage& storage, bool isFailing)>;

    StorageWatch(std::vector<Storage> storages, TellT tellOthers,
                 std::chrono::milliseconds retry = std::chrono::seconds(1));
    ~StorageWatch();

    StorageWatch(const StorageWatch&) = delete;
    StorageWatch& operator=(const StorageWatch&) = delete;

    /// Something cannot be written. Waits for nothing.
    void wake();

private:
    enum class Told { nothing, works, fails };

    struct Watched {
        Storage storage;
        Told told;
    };

    void run();
    bool settle(Watched& watched) const;

    const TellT tell;
    const std::chrono::milliseconds interval;
    std::vector<Watched> all;  // the thread's

    std::mutex mutex;
    std::condition_variable change;
    bool woken = true;      // guarded by mutex
    bool stopping = false;  // guarded by mutex
    std::thread thread;     // last: it uses all of the above
};

}  // namespace ZorvNode
