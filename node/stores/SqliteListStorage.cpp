#include "stores/SqliteListStorage.hpp"

#include <utility>

#include "stores/Transaction.hpp"

namespace ZorvNode {

namespace {

/// The item in its whole length.
ListDataT padded(ListDataT data, std::size_t size)
{
    data.resize(size);
    return data;
}

}  // namespace

SqliteListStorage::SqliteListStorage(Database& listDatabase, const ListLimits& listLimits)
    : MemoryListStorage(listLimits),
      database(listDatabase),
      insertList(database, "INSERT INTO lists (identity, name, itemSize) VALUES (?, ?, ?)"),
      deleteList(database, "DELETE FROM lists WHERE identity = ?"),
      deleteItems(database, "DELETE FROM items WHERE list = ?"),
      insertItem(database, "INSERT OR REPLACE INTO items (number, list, data) VALUES (?, ?, ?)"),
      deleteItem(database, "DELETE FROM items WHERE number = ?"),
      updateItem(database, "UPDATE items SET data = ? WHERE number = ?"),
      keepLast(database, "UPDATE sqlite_sequence SET seq = max(seq, ?) WHERE name = ?")
{
    Contents loaded = load();
    lastIdentity = loaded.lastIdentity;
    lastNumber = loaded.lastNumber;
    restore(std::move(loaded));
}

void SqliteListStorage::recordCreate(const std::string& name, const List& list)
{
    lastIdentity = list.identity;  // a failure does not tell whether it is on record all the same
    record([&] { insertList.run(list.identity, name, list.itemSize); }, [&] { changes.listMade(list.identity); });
}

void SqliteListStorage::recordRemove(const List& list)
{
    record(
        [&] {
            Transaction removal(database);
            deleteItems.run(list.identity);
            deleteList.run(list.identity);
            removal.commit();
        },
        [&] { changes.listRemoved(list.identity); });
}

void SqliteListStorage::recordPush(const List& list, std::uint64_t number, const void* data)
{
    lastNumber = number;
    record(
        [&] {
            insertItem.run(number, list.identity, Blob{data, list.itemSize});
        },
        [&] { changes.itemChanged(list.identity, number); });
}

void SqliteListStorage::recordErase(const List& list, std::uint64_t number)
{
    record([&] { deleteItem.run(number); }, [&] { changes.itemErased(list.identity, number); });
}

void SqliteListStorage::recordReplace(const List& list, std::uint64_t number, const void* data)
{
    record(
        [&] {
            updateItem.run(Blob{data, list.itemSize}, number);
        },
        [&] { changes.itemChanged(list.identity, number); });
}

template <class WriteT, class NoteT>
void SqliteListStorage::record(WriteT write, NoteT note)
{
    if (!changes.haveBegun()) {
        try {
            write();
            database.getWrites().worked();
            return;
        } catch (const StoreError& e) {
            changes.begin(lastIdentity, lastNumber);
            database.getWrites().failed(e.what());
        }
    }
    note();
}

void SqliteListStorage::catchUp()
{
    whileUnchanged([this](const Contents& present) {
        if (!changes.haveBegun()) {
            return;
        }
        try {
            recordChanges(present);
            changes.end();
        } catch (const StoreError& e) {
            database.getWrites().failed(e.what());
        }
    });
}

void SqliteListStorage::recordChanges(const Contents& present)
{
    std::map<std::uint64_t, const std::pair<const std::string, List>*> byIdentity;
    for (const auto& entry : present.lists) {
        byIdentity[entry.second.identity] = &entry;
    }
    Transaction change(database);
    for (const std::uint64_t identity : changes.getLists()) {
        deleteItems.run(identity);
        deleteList.run(identity);
    }
    for (const std::uint64_t identity : changes.getLists()) {
        if (const auto made = byIdentity.find(identity); made != byIdentity.end()) {
            insertList.run(identity, made->second->first, made->second->second.itemSize);
        }
    }
    for (const auto& [number, identity] : changes.getItems()) {
        const List& list = byIdentity.at(identity)->second;
        if (const auto item = list.items.find(number); item != list.items.end()) {
            const ListDataT whole = padded(item->second, list.itemSize);
            insertItem.run(number, identity, Blob{whole.data(), whole.size()});
        } else {
            deleteItem.run(number);
        }
    }
    keepLast.run(lastIdentity, "lists");
    keepLast.run(lastNumber, "items");
    change.commit();
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
        auto& items = list->second->items;
        items.emplace_hint(items.end(), number, trimmed(data.data, data.size));
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
