/// The last publication that was accepted of each client, for the clients heard of latest.
///
/// Threads:   one at a time.
/// Ownership: the database outlives it.
/// Failure:   store and storeAll throw StoreError.
#pragma once

#include <map>
#include <optional>

#include "ingress/PublicationId.hpp"
#include "stores/Database.hpp"
#include "stores/Statement.hpp"

namespace ZorvNode {

class KnownClients {
public:
    /// @param database null: they are known no longer than the process lives.
    KnownClients(Database* database, std::size_t clientBound);

    /// Whether this publication, or a later one of the client, was accepted.
    bool hasAccepted(const PublicationId& id) const;

    /// In the database, inside the caller's transaction; and in memory, when that is committed.
    void store(const PublicationId& id);
    void note(const PublicationId& id);

    /// All that stand in memory, inside the caller's transaction. There has to be a database.
    void storeAll();

private:
    struct Client {
        std::uint64_t last = 0;
        std::uint64_t heard = 0;  // grows with each publication of any client
    };

    struct Statements {
        explicit Statements(Database& database);

        Statement set;
        Statement remove;
        Statement removeAll;
    };

    using ClientsT = std::map<std::string, Client>;

    void load(Database& database);
    ClientsT::const_iterator leaving(const PublicationId& id) const;

    const std::size_t bound;
    std::optional<Statements> statements;
    ClientsT clients;
    std::uint64_t lastHeard = 0;
};

}  // namespace ZorvNode
