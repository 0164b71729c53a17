/// Decides when a database moves what stands in its write-ahead log to its file, and does it on a thread of its own.
///
/// The log grows with each commit. When it has grown enough, or its first commit was some time ago, the checkpoint waits for
/// a pause of the writers, because they would have to wait for it; when it goes on growing the checkpoint waits no longer.
/// A checkpoint brings everything before it onto the disk, so that time bounds what a loss of power can cost.
///
/// Threads:   committed from any thread, cheap; the work runs on the checkpointer's thread.
/// Ownership: the destructor waits for a work that is running.
/// Failure:   a work that answers false is tried again after a moment.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

namespace ZorvNode {

struct CheckpointSettings {
    int pages = 1000;        ///< of the log that make a checkpoint worth while
    int urgentPages = 8000;  ///< that make it overdue
    std::chrono::milliseconds pause{20};
    std::chrono::milliseconds retry{1000};
    std::chrono::milliseconds age{5000};  ///< of the first commit in the log that makes a checkpoint worth while
};

class Checkpointer {
public:
    /// @param prepare called before each checkpoint; what is committed meanwhile belongs to it.
    Checkpointer(const CheckpointSettings& checkpointSettings, std::function<bool()> checkpoint,
                 std::function<void()> prepare);
    ~Checkpointer();

    Checkpointer(const Checkpointer&) = delete;
    Checkpointer& operator=(const Checkpointer&) = delete;

    /// @param pages in the log after this commit.
    void committed(int pages);

private:
    using LockT = std::unique_lock<std::mutex>;
    using ClockT = std::chrono::steady_clock;

    void run();
    void awaitWork(LockT& lock);
    void awaitPause(LockT& lock);

    const CheckpointSettings settings;
    const std::function<bool()> work;
    const std::function<void()> preparation;
    std::mutex mutex;
    std::condition_variable wake;
    int pagesInLog = 0;         // guarded by mutex
    std::uint64_t commits = 0;  // guarded by mutex
    ClockT::time_point oldest;  // guarded by mutex; when the first commit came that is in the log
    bool stopping = false;      // guarded by mutex
    std::thread thread;
};

}  // namespace ZorvNode
