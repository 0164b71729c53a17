/// Several statements as one change: all of it at commit, nothing without.
///
/// Threads: holds the database's lock as long as it lives.
/// Failure: StoreError.
#pragma once

#include <mutex>

#include "stores/Database.hpp"
#include "stores/Statement.hpp"

namespace ZorvNode {

/// Prepared once: a transaction of one statement takes no longer than without one.
struct Database::Frame {
    explicit Frame(Database& framed)
        : begin(framed, "BEGIN IMMEDIATE"),
          commit(framed, "COMMIT"),
          rollback(framed, "ROLLBACK")
    {
    }

    Statement begin;
    Statement commit;
    Statement rollback;
};

class Transaction {
public:
    explicit Transaction(Database& changed) : frame(*changed.frame), lock(changed) { frame.begin.run(); }

    ~Transaction()
    {
        try {
            if (!isCommitted) {
                frame.rollback.run();
            }
        } catch (const StoreError&) {
            return;  // a grave failure has rolled it back already
        }
    }

    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit()
    {
        frame.commit.run();
        isCommitted = true;
    }

private:
    Database::Frame& frame;
    const std::lock_guard<Database> lock;
    bool isCommitted = false;
};

}  // namespace ZorvNode
