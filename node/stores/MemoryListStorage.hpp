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

    ZorvReturnT create(std::string_view list, std::uint32_t itemSize) override;
    ZorvReturnT remove(std::string_view list) override;
    ZorvReturnT describe(std::string_view list, std::uint64_t& identity, std::uint32_t& itemSize) override;
    ZorvReturnT isEmpty(std::string_view list, bool& empty) override;
    ZorvReturnT pushBack(std::string_view list, const void* data, std::uint64_t& number) override;
    ZorvReturnT erase(std::string_view list, std::uint64_t number) override;
    ZorvReturnT replace(std::string_view list, std::uint64_t number, const void* data) override;
    ZorvReturnT findFrom(std::string_view list, std::uint64_t number, ListItem& item) override;
    ZorvReturnT findNumberFrom(std::string_view list, std::uint64_t number, std::uint64_t& found) override;
    std::vector<ListDescription> describeAll() override;

protected:
    struct List {
        std::uint64_t identity = 0;
        std::uint32_t itemSize = 0;
        std::map<std::uint64_t, ListDataT> items;  // without the zeros at their ends
    };

    struct Contents {
        std::map<std::string, List, std::less<>> lists;
        std::uint64_t lastNumber = 0;
        std::uint64_t lastIdentity = 0;
    };

    /// The item as it is kept: many are longer than what is in them.
    static ListDataT trimmed(const void* data, std::size_t size);

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
    virtual void recordPush(const List& /*list*/, std::uint64_t /*number*/, const void* /*data*/) {}
    virtual void recordErase(const List& /*list*/, std::uint64_t /*number*/) {}
    virtual void recordReplace(const List& /*list*/, std::uint64_t /*number*/, const void* /*data*/) {}

    List* find(std::string_view list);  // under either mutex

    const ListLimits limits;
    std::mutex writing;         // held from the check to the change; the record is written under it alone
    std::shared_mutex reading;  // exclusive for the change itself
    Contents contents;          // changed under both, read under either
};

}  // namespace ZorvNode
