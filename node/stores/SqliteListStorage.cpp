#include "stores/SqliteListStorage.hpp"

#include "stores/Transaction.hpp"

namespace ZorvNode {

namespace {

Blob blob(const ListDataT& data)
{
    return {data.data(), data.size()};
}

}  // namespace

SqliteListStorage::SqliteListStorage(Database& listDatabase, const ListLimits& listLimits, const LogSinkT& logSink,
                                     std::chrono::milliseconds calm)
    : MemoryListStorage(listLimits),
      database(listDatabase),
      report(logSink, "writing replicated lists", calm),
      insertList(database, "INSERT INTO lists (identity, name, itemSize) VALUES (?, ?, ?)"),
      deleteList(database, "DELETE FROM lists WHERE identity = ?"),
      deleteItems(database, "DELETE FROM items WHERE list = ?"),
      insertItem(database, "INSERT INTO items (number, list, data) VALUES (?, ?, ?)"),
      deleteItem(database, "DELETE FROM items WHERE number = ?"),
      updateItem(database, "UPDATE items SET data = ? WHERE number = ?")
{
    restore(load());
}

ZorvReturnT SqliteListStorage::recordCreate(const std::string& name, const List& list)
{
    return recorded([&] { insertList.run(list.identity, name, list.itemSize); });
}

ZorvReturnT SqliteListStorage::recordRemove(const List& list)
{
    return recorded([&] {
        Transaction removal(database);
        deleteItems.run(list.identity);
        deleteList.run(list.identity);
        removal.commit();
    });
}

ZorvReturnT SqliteListStorage::recordPush(const List& list, const ListItem& item)
{
    return recorded([&] { insertItem.run(item.number, list.identity, blob(item.data)); });
}

ZorvReturnT SqliteListStorage::recordErase(std::uint64_t number)
{
    return recorded([&] { deleteItem.run(number); });
}

ZorvReturnT SqliteListStorage::recordReplace(const ListItem& item)
{
    return recorded([&] { updateItem.run(blob(item.data), item.number); });
}

template <class WriteT>
ZorvReturnT SqliteListStorage::recorded(WriteT write)
{
    try {
        write();
        report.worked();
        return ZORV_RETURN_OK;
    } catch (const StoreError& e) {
        report.failed(e.what());
        return e.kind == StoreError::Kind::full ? ZORV_RETURN_NO_RESOURCES : ZORV_RETURN_FAILED;
    }
}

SqliteListStorage::Contents SqliteListStorage::load()
{
    Contents loaded;
    std::map<std::uint64_t, List*> byIdentity;
    loadLists(loaded, byIdentity);
    loadItems(byIdentity);
    loaded.lastIdentity = lastUsed("lists");
    loaded.lastNumber = lastUsed("items");
    return loaded;
}

void SqliteListStorage::loadLists(Contents& loaded, std::map<std::uint64_t, List*>& byIdentity)
{
    Statement(database, "SELECT identity, name, itemSize FROM lists").each([&](const Row& row) {
        List& list = loaded.lists[row.text(1)];
        list.identity = row.number(0);
        list.itemSize = static_cast<std::uint32_t>(row.number(2));
        byIdentity[list.identity] = &list;
    });
}

void SqliteListStorage::loadItems(const std::map<std::uint64_t, List*>& byIdentity)
{
    Statement(database, "SELECT number, list, data FROM items ORDER BY number").each([&](const Row& row) {
        const std::uint64_t number = row.number(0);
        const auto list = byIdentity.find(row.number(1));
        const Blob data = row.bytes(2);
        if (list == byIdentity.end() || data.size != list->second->itemSize) {
            throw StoreError(StoreError::Kind::damaged,
                             database.getFile() + ": is damaged: item " + std::to_string(number) + " fits no list");
        }
        const auto* first = static_cast<const std::uint8_t*>(data.data);
        auto& items = list->second->items;
        items.emplace_hint(items.end(), number, ListDataT(first, first + data.size));
    });
}

/// The highest number that was ever in the table.
std::uint64_t SqliteListStorage::lastUsed(const std::string& table)
{
    std::uint64_t last = 0;
    Statement(database, "SELECT seq FROM sqlite_sequence WHERE name = ?")
        .each([&](const Row& row) { last = row.number(0); }, table);
    return last;
}

}  // namespace ZorvNode
