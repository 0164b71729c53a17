/// The notifications that the node has accepted and that may not be handled yet, numbered in the order of acceptance.
///
/// With a database an accepted notification is in it before it is passed on, and read again when the node starts. While the
/// database cannot be written the inbox goes on in memory alone; catchUp records what is left of that.
///
/// Threads:   one at a time.
/// Ownership: the database outlives it; an entry's notification lives as long as anybody holds it.
/// Failure:   the constructor throws StoreError. Later failures are told to the database's report of writes.
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "LogSink.hpp"
#include "ingress/KnownClients.hpp"
#include "ingress/PublishedNotification.hpp"
#include "stores/Database.hpp"
#include "stores/Statement.hpp"

namespace ZorvNode {

class NotificationInbox {
public:
    using NotificationT = std::shared_ptr<PublishedNotification>;

    struct Entry {
        NotificationT notification;
        bool isSent = false;
        bool wasSent = false;  ///< maybe, before its consumers left or in an earlier life: it may have been handled
    };

    using EntriesT = std::map<std::uint64_t, Entry>;  // by number

    /// @param database null: the inbox lives no longer than the process.
    NotificationInbox(Database* database, LogSinkT logSink);

    /// Answers the first of the new entries, which are the last ones of all.
    /// @param id of the publication, when its client has given it one.
    EntriesT::iterator append(const std::vector<NotificationT>& notifications, const std::optional<PublicationId>& id);

    /// Whether a publication is in the inbox, or was.
    bool hasAccepted(const PublicationId& id) const { return clients.hasAccepted(id); }

    void markSent(Entry& entry);

    /// Those to whom entries were sent have left: every entry waits again.
    void markAllWaiting();

    /// Entries that were sent to nobody yet, and the others.
    std::size_t getNumberWaiting() const { return waiting; }
    std::size_t getNumberSent() const { return entries.size() - waiting; }

    /// The first entry that was sent to nobody yet.
    EntriesT::iterator firstWaiting();

    EntriesT& getEntries() { return entries; }
    std::uint64_t getLastNumber() const { return lastNumber; }

    /// Forgets the entries up to a number: they are handled.
    void trim(std::uint64_t number);

    /// Whether all entries are in the database.
    bool isRecorded() const { return statements && !behind; }

    /// Records what could not be recorded when it came, if there is anything.
    void catchUp();

private:
    struct Statements {
        explicit Statements(Database& database);

        Database& database;
        Statement insert;
        Statement trim;
    };

    void load();
    void record(const std::vector<NotificationT>& notifications, const std::optional<PublicationId>& id);

    /// Runs one change of the database, unless an earlier one is still to be caught up with.
    template <class ChangeT>
    void write(ChangeT change);

    const LogSinkT log;
    std::optional<Statements> statements;
    KnownClients clients;
    EntriesT entries;
    std::size_t waiting = 0;
    std::uint64_t sentUpTo = 0;  // all entries up to this number were sent
    std::uint64_t lastNumber = 0;
    bool behind = false;  // of the entries
};

}  // namespace ZorvNode
