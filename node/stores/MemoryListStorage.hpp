/// Replicated lists in memory: they live as long as this object, and no longer than the process.
///
/// A storage that outlives the process derives from this one and records each change before it is made; what is read is
/// always what stands in memory, and no reader waits for a record.
///
/// Threads:   any; one writer at a time, readers beside it.
#pragma once

#include <map>
#include <mutex>
#include <shared_mutex>

#include "stores/ListStorage.hpp"

namespace ZorvNode {

class MemoryListStorage : public ListStorage {
public:
    explicit MemoryListStorage(const ListLimits& listLimits) : limits(listLimits) {}

    ZorvReturnT create(const std::string& list, std::uint32_t itemSize) override;
    ZorvReturnT remove(const std::string& list) override;
    ZorvReturnT describe(const std::string& list, std::uint64_t& identity, std::uint32_t& itemSize) override;
    ZorvReturnT isEmpty(const std::string& list, bool& empty) override;
    ZorvReturnT pushBack(const std::string& list, const void* data, std::uint64_t& number) override;
    ZorvReturnT erase(const std::string& list, std::uint64_t number) override;
    ZorvReturnT replace(const std::string& list, std::uint64_t number, const void* data) override;
    ZorvReturnT findFrom(const std::string& list, std::uint64_t number, ListItem& item) override;
    std::vector<ListDescription> describeAll() override;

protected:
    struct List {
        std::uint64_t identity = 0;
        std::uint32_t itemSize = 0;
        std::map<std::uint64_t, ListDataT> items;
    };

    struct Contents {
        std::map<std::string, List> lists;
        std::uint64_t lastNumber = 0;
        std::uint64_t lastIdentity = 0;
    };

    /// What was recorded in an earlier life; before the first operation.
    void restore(Contents recorded) { contents = std::move(recorded); }

    /// Calls look(contents) while nothing is changed.
    template <class LookT>
    void whileUnchanged(LookT look)
    {
        const std::lock_guard<std::mutex> writer(writing);
        look(static_cast<const Contents&>(contents));
    }

private:
    // Called before a change, one at a time. What they throw goes through, and nothing has changed.
    virtual void recordCreate(const std::string& /*name*/, const List& /*list*/) {}
    virtual void recordRemove(const List& /*list*/) {}
    virtual void recordPush(const List& /*list*/, const ListItem& /*item*/) {}
    virtual void recordErase(const List& /*list*/, std::uint64_t /*number*/) {}
    virtual void recordReplace(const List& /*list*/, const ListItem& /*item*/) {}

    List* find(const std::string& list);  // under either mutex

    const ListLimits limits;
    std::mutex writing;         // held from the check to the change; the record is written under it alone
    std::shared_mutex reading;  // exclusive for the change itself
    Contents contents;          // changed under both, read under either
};

}  // namespace ZorvNode
