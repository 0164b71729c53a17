/// Replicated lists that outlive the process: in memory for all readers, in a database for the next start.
///
/// Each operation that changes something is one transaction; it is on record before it is seen. Item numbers and
/// identities go on over restarts. Lists that are longer than the limits when they are read stay as they are.
///
/// Threads:   any; readers never wait for the database.
/// Ownership: the database outlives this object.
/// Failure:   the constructor throws StoreError. A change that cannot be recorded answers -10 when the disk is full and -1
///            otherwise, has changed nothing, and is told to the log: the first one, and when it works again.
#pragma once

#include <chrono>

#include "LogSink.hpp"
#include "stores/Database.hpp"
#include "stores/FailureReport.hpp"
#include "stores/MemoryListStorage.hpp"
#include "stores/Statement.hpp"

namespace ZorvNode {

class SqliteListStorage : public MemoryListStorage {
public:
    SqliteListStorage(Database& listDatabase, const ListLimits& listLimits, const LogSinkT& logSink,
                      std::chrono::milliseconds calm = std::chrono::seconds(10));

    bool isFailing() const override { return report.isFailing(); }

private:
    ZorvReturnT recordCreate(const std::string& name, const List& list) override;
    ZorvReturnT recordRemove(const List& list) override;
    ZorvReturnT recordPush(const List& list, const ListItem& item) override;
    ZorvReturnT recordErase(std::uint64_t number) override;
    ZorvReturnT recordReplace(const ListItem& item) override;

    template <class WriteT>
    ZorvReturnT recorded(WriteT write);

    Contents load();
    void loadLists(Contents& loaded, std::map<std::uint64_t, List*>& byIdentity);
    void loadItems(const std::map<std::uint64_t, List*>& byIdentity);
    std::uint64_t lastUsed(const std::string& table);

    Database& database;
    FailureReport report;
    Statement insertList;
    Statement deleteList;
    Statement deleteItems;
    Statement insertItem;
    Statement deleteItem;
    Statement updateItem;
};

}  // namespace ZorvNode
