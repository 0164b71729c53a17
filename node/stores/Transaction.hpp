/// Several statements as one change: all of it at commit, nothing without.
///
/// Threads: holds the database's lock as long as it lives.
/// Failure: StoreError.
#pragma once

#include <mutex>

#include "stores/Database.hpp"

namespace ZorvNode {

class Transaction {
public:
    explicit Transaction(Database& changed) : database(changed), lock(changed) { database.execute("BEGIN IMMEDIATE"); }

    ~Transaction()
    {
        try {
            if (!isCommitted) {
                database.execute("ROLLBACK");
            }
        } catch (const StoreError&) {
            return;  // a grave failure has rolled it back already
        }
    }

    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit()
    {
        database.execute("COMMIT");
        isCommitted = true;
    }

private:
    Database& database;
    const std::lock_guard<Database> lock;
    bool isCommitted = false;
};

}  // namespace ZorvNode
