/// One SQLite file, open for this process alone: write-ahead log, exclusive lock, checkpoints on a thread of their own.
///
/// An empty file gets the schema; one of an earlier version is brought up to date, both in one transaction. While the
/// schema is being checked and found wrong, nothing is written, not even what a log left behind.
///
/// Threads:   any. The database is a lock (lock, unlock: recursive): a Statement holds it while it runs, a Transaction as
///            long as it lives. Whoever has to see several statements as one takes it with std::lock_guard. The
///            checkpoint takes it too, so that a writer may have to wait for one; see Checkpointer.
/// Ownership: outlives its statements and transactions.
/// Failure:   StoreError. A failed statement has changed nothing.
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "LogSink.hpp"
#include "stores/Checkpointer.hpp"
#include "stores/FailureReport.hpp"
#include "stores/Schema.hpp"
#include "stores/StoreError.hpp"
#include "stores/StoreSettings.hpp"

struct sqlite3;

namespace ZorvNode {

struct DatabaseSettings {
    Durability durability = Durability::process;
    CheckpointSettings checkpoints;
    std::chrono::milliseconds calm{5000};  ///< without a failure, and what has failed works again
};

class Database {
public:
    /// @param logSink told of writes and checkpoints that fail.
    Database(const std::string& databaseFile, const Schema& schema, const DatabaseSettings& settings,
             const LogSinkT& logSink);
    ~Database();

    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& getFile() const { return file; }

    /// Runs statements without parameters; their rows are dropped.
    void execute(const std::string& sql);

    /// Moves what stands in the log to the file.
    void checkpoint();

    /// Called before each checkpoint, under the database's lock; what it writes is on the disk when that is done.
    void beforeCheckpoint(std::function<void()> call);

    /// Where those who write tell whether it has worked.
    FailureReport& getWrites() { return writes; }

    /// Whether something could not be written, or not be moved into the file.
    bool isFailing() const { return writes.isFailing() || checkpointReport.isFailing(); }

    /// Called when that begins, on any thread, with locks held: it must not wait for anything.
    void whenFailing(const std::function<void()>& call);

    void lock() { mutex.lock(); }
    void unlock() { mutex.unlock(); }

private:
    friend class Statement;
    friend class Transaction;

    struct Frame;  // the statements around a transaction

    struct Closer {
        void operator()(sqlite3* opened) const;
    };

    void open();
    void adopt(const Schema& schema);
    void check();
    bool tryCheckpoint();
    void syncLog() const;
    StoreError failure(int code) const;

    const std::string file;
    std::recursive_mutex mutex;
    std::unique_ptr<sqlite3, Closer> handle;  // used under mutex
    std::function<void()> preparation;        // of checkpoints; used under mutex
    bool isPreparing = false;                 // used under mutex
    std::unique_ptr<Frame> frame;
    FailureReport writes;
    FailureReport checkpointReport;
    std::unique_ptr<Checkpointer> checkpointer;
};

}  // namespace ZorvNode
