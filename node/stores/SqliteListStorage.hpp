/// Replicated lists that outlive the process: in memory for all readers, in a database for the next start.
///
/// Each operation that changes something is one transaction; it is on record before it is seen. Item numbers and
/// identities go on over restarts. Lists that are longer than the limits when they are read stay as they are.
///
/// While the database cannot be written, the lists go on in memory alone. What has changed is noted and recorded by
/// catchUp, as one transaction, when it can be written again. Until then a node that ends loses it.
///
/// Threads:   any; readers never wait for the database.
/// Ownership: the database outlives this object.
/// Failure:   the constructor throws StoreError. Later failures are told to the database's report of writes.
#pragma once

#include "stores/Database.hpp"
#include "stores/MemoryListStorage.hpp"
#include "stores/Statement.hpp"
#include "stores/UnrecordedChanges.hpp"

namespace ZorvNode {

class SqliteListStorage : public MemoryListStorage {
public:
    SqliteListStorage(Database& listDatabase, const ListLimits& listLimits);

    void catchUp() override;

private:
    void recordCreate(const std::string& name, const List& list) override;
    void recordRemove(const List& list) override;
    void recordPush(const List& list, std::uint64_t number, const void* data) override;
    void recordErase(const List& list, std::uint64_t number) override;
    void recordReplace(const List& list, std::uint64_t number, const void* data) override;

    /// Runs write, or note where that is not possible.
    template <class WriteT, class NoteT>
    void record(WriteT write, NoteT note);

    void recordChanges(const Contents& present);

    Contents load();
    void loadLists(Contents& loaded, std::map<std::uint64_t, List*>& byIdentity);
    void loadItems(const std::map<std::uint64_t, List*>& byIdentity);
    std::uint64_t lastUsed(const std::string& table);

    Database& database;
    Statement insertList;
    Statement deleteList;
    Statement deleteItems;
    Statement insertItem;
    Statement deleteItem;
    Statement updateItem;
    Statement keepLast;
    std::uint64_t lastIdentity = 0;  // of those made so far
    std::uint64_t lastNumber = 0;
    UnrecordedChanges changes;
};

}  // namespace ZorvNode
