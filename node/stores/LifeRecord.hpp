/// How the last life of a store ended: in order, with its process, or with the machine; and what that may have cost.
///
/// Threads:   one constructs it and ends the life; checkpoints come from any thread.
/// Ownership: the database outlives it.
/// Failure:   the constructor throws StoreError.
#pragma once

#include <string>

#include "LogSink.hpp"
#include "stores/Database.hpp"
#include "stores/Statement.hpp"
#include "stores/StoreSettings.hpp"

namespace ZorvNode {

class LifeRecord {
public:
    /// Tells the log when the machine has stopped in the middle of the last life, and begins a new one.
    /// @param boot names the time since the machine's start; the same text means that it has not stopped since.
    LifeRecord(Database& lifeDatabase, Durability durability, const std::string& boot, const LogSinkT& logSink);
    ~LifeRecord();

    LifeRecord(const LifeRecord&) = delete;
    LifeRecord& operator=(const LifeRecord&) = delete;

    /// What the system says; "" when it says nothing.
    static std::string thisBoot();

private:
    void judge(Durability durability, const std::string& boot);
    void noteSync();

    Database& database;
    const LogSinkT log;
    Statement synced;
};

}  // namespace ZorvNode
