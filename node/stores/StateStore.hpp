/// What a node keeps between its runs: its replicated lists, in "zorv.db" of the state directory or in memory.
///
/// Threads:   one constructs and destroys it.
/// Ownership: owns what it gives.
/// Failure:   the constructor throws StoreError: one line that names the file and says how to go on. It is logged too.
#pragma once

#include <memory>

#include "LogSink.hpp"
#include "stores/Database.hpp"
#include "stores/LifeRecord.hpp"
#include "stores/ListStorage.hpp"
#include "stores/StoreSettings.hpp"

namespace ZorvNode {

class StateStore {
public:
    StateStore(const StoreSettings& settings, const ListLimits& limits, const LogSinkT& log);

    ListStorage& getLists() { return *lists; }

    /// Whether what changes cannot be written for the moment, and is kept in memory alone.
    bool isFailing() const { return database && database->isFailing(); }

    /// Null when everything is kept in memory.
    Database* getDatabase() { return database.get(); }

private:
    void openFile(const StoreSettings& settings, const ListLimits& limits, const LogSinkT& log);
    void open(const std::string& file, const StoreSettings& settings, const ListLimits& limits, const LogSinkT& log);

    std::unique_ptr<Database> database;
    std::unique_ptr<LifeRecord> life;
    std::unique_ptr<ListStorage> lists;
};

}  // namespace ZorvNode
