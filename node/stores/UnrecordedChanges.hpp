/// Which lists and items were changed while the database could not be written.
///
/// What they have become stands in memory. So each counts once, however often it changes, and what came and went meanwhile
/// not at all.
///
/// Threads: one at a time.
#pragma once

#include <cstdint>
#include <map>
#include <set>

namespace ZorvNode {

class UnrecordedChanges {
public:
    /// @param lastIdentity, lastNumber the last list and item that may be on record.
    void begin(std::uint64_t lastIdentity, std::uint64_t lastNumber)
    {
        begun = true;
        lastIdentityOnRecord = lastIdentity;
        lastNumberOnRecord = lastNumber;
    }

    void end() { *this = {}; }

    bool haveBegun() const { return begun; }

    void listMade(std::uint64_t identity) { lists.insert(identity); }
    void itemChanged(std::uint64_t list, std::uint64_t number) { items[number] = list; }

    void listRemoved(std::uint64_t identity)
    {
        for (auto item = items.begin(); item != items.end();) {
            item = item->second == identity ? items.erase(item) : std::next(item);
        }
        lists.erase(identity);
        if (identity <= lastIdentityOnRecord) {
            lists.insert(identity);
        }
    }

    void itemErased(std::uint64_t list, std::uint64_t number)
    {
        items.erase(number);
        if (number <= lastNumberOnRecord) {
            items[number] = list;
        }
    }

    /// Identities.
    const std::set<std::uint64_t>& getLists() const { return lists; }

    /// List identities by item number.
    const std::map<std::uint64_t, std::uint64_t>& getItems() const { return items; }

private:
    bool begun = false;
    std::uint64_t lastIdentityOnRecord = 0;
    std::uint64_t lastNumberOnRecord = 0;
    std::set<std::uint64_t> lists;
    std::map<std::uint64_t, std::uint64_t> items;
};

}  // namespace ZorvNode
