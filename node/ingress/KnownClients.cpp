#include "ingress/KnownClients.hpp"

#include <algorithm>

namespace ZorvNode {

KnownClients::Statements::Statements(Database& database)
    : set(database, "INSERT OR REPLACE INTO clients (name, last, heard) VALUES (?, ?, ?)"),
      remove(database, "DELETE FROM clients WHERE name = ?"),
      removeAll(database, "DELETE FROM clients")
{
}

KnownClients::KnownClients(Database* database, std::size_t clientBound) : bound(clientBound)
{
    if (database != nullptr) {
        statements.emplace(*database);
        load(*database);
    }
}

void KnownClients::load(Database& database)
{
    Statement(database, "SELECT name, last, heard FROM clients").each([&](const Row& row) {
        clients[row.text(0)] = {row.number(1), row.number(2)};
        lastHeard = std::max(lastHeard, row.number(2));
    });
}

bool KnownClients::hasAccepted(const PublicationId& id) const
{
    const auto found = clients.find(id.client);
    return found != clients.end() && id.number <= found->second.last;
}

void KnownClients::store(const PublicationId& id)
{
    if (!statements) {
        return;
    }
    if (const auto oldest = leaving(id); oldest != clients.end()) {
        statements->remove.run(oldest->first);
    }
    statements->set.run(id.client, id.number, lastHeard + 1);
}

void KnownClients::storeAll()
{
    statements->removeAll.run();
    for (const auto& [name, client] : clients) {
        statements->set.run(name, client.last, client.heard);
    }
}

void KnownClients::note(const PublicationId& id)
{
    if (const auto oldest = leaving(id); oldest != clients.end()) {
        clients.erase(oldest);
    }
    clients[id.client] = {id.number, ++lastHeard};
}

/// The one that makes room for a client that is new; end when there is room.
KnownClients::ClientsT::const_iterator KnownClients::leaving(const PublicationId& id) const
{
    if (clients.size() < bound || clients.count(id.client) > 0) {
        return clients.end();
    }
    return std::min_element(clients.begin(), clients.end(),
                            [](const auto& left, const auto& right) { return left.second.heard < right.second.heard; });
}

}  // namespace ZorvNode
