/// A disk under SQLite that does what a test wants: it is full, or broken, or slow; and it remembers what was written and
/// what was synced, so that its power can be cut at any point.
///
/// Databases opened while it lives are on it; the files themselves lie where they would without it.
///
/// Threads: any, like the databases.
#pragma once

#include <sqlite3.h>

#include <future>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <vector>

namespace ZorvNode {

class FaultyDisk {
public:
    FaultyDisk();
    ~FaultyDisk();

    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;

    /// Databases that are opened from now on are not on it.
    void release();

    /// From now on whatever changes a file is answered with this SQLite code and not done. SQLITE_OK: all is well again.
    void failWith(int code);

    /// The given number of changes are done, then it fails as above.
    void failAfter(std::size_t changes, int code);

    /// The next change waits for this; awaitBlocked waits until it does.
    void block(std::shared_future<void> release);
    void awaitBlocked();

    /// Changes and syncs since the disk was made.
    std::size_t getNumberOfSteps() const;

    /// Whether the log, "-wal", was synced in step number steps or before, and in which one last.
    std::size_t lastSyncOfLog(std::size_t steps) const;

    /// Writes to a folder what the files of another one may hold after the power was cut: what they held when the disk was
    /// made, what was synced in the first so many steps, and any part of what was not.
    void cutPower(std::size_t steps, const std::map<std::string, std::string>& filesBefore, std::mt19937& dice,
                  const std::string& folder) const;

private:
    friend struct DiskFile;

    enum class Kind { write, truncate, sync, remove };

    struct Step {
        Kind kind;
        std::string file;  // without folders
        std::size_t offset;
        std::string data;
    };

    /// SQLITE_OK when the change may be done.
    int begin(Step step);

    sqlite3_vfs* const beneath;
    sqlite3_vfs vfs;

    mutable std::mutex mutex;
    std::vector<Step> steps;             // guarded by mutex
    int failure = SQLITE_OK;             // guarded by mutex
    std::size_t changesLeft = SIZE_MAX;  // guarded by mutex; before the failure
    std::shared_future<void> gate;       // guarded by mutex
    std::promise<void> blocked;
};

}  // namespace ZorvNode
