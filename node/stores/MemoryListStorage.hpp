/// Replicated lists in memory: they live as long as this object, and no longer than the process.
///
/// Threads:   any; one mutex.
#pragma once

#include <map>
#include <mutex>

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

private:
    struct List {
        std::uint64_t identity = 0;
        std::uint32_t itemSize = 0;
        std::map<std::uint64_t, ListDataT> items;
    };

    List* find(const std::string& list);  // under the mutex

    const ListLimits limits;
    std::mutex mutex;
    std::map<std::string, List> lists;  // guarded by mutex
    std::uint64_t lastNumber = 0;       // guarded by mutex
    std::uint64_t lastIdentity = 0;     // guarded by mutex
};

}  // namespace ZorvNode
