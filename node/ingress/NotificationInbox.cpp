#include "ingress/NotificationInbox.hpp"

#include <utility>

#include "ZorvMwSpiLog_1.h"
#include "notification/NotificationReader.hpp"
#include "notification/NotificationWriter.hpp"
#include "stores/Transaction.hpp"
#include "json/JsonFields.hpp"

namespace ZorvNode {

namespace {

constexpr unsigned deepest = 8;
constexpr std::size_t knownClients = 1000;

std::string toJson(const FmNotification& notification)
{
    return notificationJson(notification.severity == YALT_FM_SEVERITY_CLEARED ? "clear" : "raise", notification);
}

NotificationInbox::NotificationT fromJson(const std::string& text)
{
    JsonDocumentT document;
    parseJson(text, deepest, document);
    if (!document.IsObject()) {
        throw ValueError("not an object");
    }
    JsonFields fields(document);
    return std::make_shared<PublishedNotification>(readNotification(fields, 0));
}

}  // namespace

NotificationInbox::Statements::Statements(Database& inboxDatabase)
    : database(inboxDatabase),
      insert(database, "INSERT INTO inbox (number, notification) VALUES (?, ?)"),
      trim(database, "DELETE FROM inbox WHERE number <= ?")
{
}

NotificationInbox::NotificationInbox(Database* database, LogSinkT logSink)
    : log(std::move(logSink)),
      clients(database, knownClients)
{
    if (database != nullptr) {
        statements.emplace(*database);
        load();
    }
}

void NotificationInbox::load()
{
    Statement(statements->database, "SELECT number, notification FROM inbox ORDER BY number").each([&](const Row& row) {
        lastNumber = row.number(0);
        try {
            entries.emplace_hint(entries.end(), lastNumber, Entry{fromJson(row.text(1)), false, true});
        } catch (const ValueError& e) {
            log(ZORV_LOG_ERROR, statements->database.getFile() + ": inbox " + std::to_string(lastNumber) +
                                    " is passed over: " + e.what());
        }
    });
    waiting = entries.size();
}

NotificationInbox::EntriesT::iterator NotificationInbox::append(const std::vector<NotificationT>& notifications,
                                                                const std::optional<PublicationId>& id)
{
    record(notifications, id);
    if (id) {
        clients.note(*id);
    }
    const std::uint64_t first = lastNumber + 1;
    for (const NotificationT& notification : notifications) {
        entries.emplace_hint(entries.end(), ++lastNumber, Entry{notification, false, false});
    }
    waiting += notifications.size();
    return entries.find(first);
}

void NotificationInbox::record(const std::vector<NotificationT>& notifications, const std::optional<PublicationId>& id)
{
    write([&] {
        std::uint64_t number = lastNumber;
        for (const NotificationT& notification : notifications) {
            statements->insert.run(++number, toJson(notification->get()));
        }
        if (id) {
            clients.store(*id);
        }
    });
}

template <class ChangeT>
void NotificationInbox::write(ChangeT change)
{
    if (!isRecorded()) {
        return;
    }
    try {
        Transaction transaction(statements->database);
        change();
        transaction.commit();
        statements->database.getWrites().worked();
    } catch (const StoreError& e) {
        behind = true;
        statements->database.getWrites().failed(e.what());
    }
}

/// The entries are few: they are written anew, whatever is on record of them.
void NotificationInbox::catchUp()
{
    if (!std::exchange(behind, false)) {
        return;
    }
    write([this] {
        statements->trim.run(lastNumber);
        for (const auto& [number, entry] : entries) {
            statements->insert.run(number, toJson(entry.notification->get()));
        }
        clients.storeAll();
    });
}

void NotificationInbox::markSent(Entry& entry)
{
    entry.wasSent = true;
    if (!entry.isSent) {
        entry.isSent = true;
        --waiting;
    }
}

NotificationInbox::EntriesT::iterator NotificationInbox::firstWaiting()
{
    auto entry = entries.upper_bound(sentUpTo);
    for (; entry != entries.end() && entry->second.isSent; ++entry) {
        sentUpTo = entry->first;
    }
    return entry;
}

void NotificationInbox::markAllWaiting()
{
    sentUpTo = 0;
    for (auto& [number, entry] : entries) {
        entry.isSent = false;
    }
    waiting = entries.size();
}

void NotificationInbox::trim(std::uint64_t number)
{
    const auto end = entries.upper_bound(number);
    if (end == entries.begin()) {
        return;
    }
    for (auto entry = entries.begin(); entry != end; ++entry) {
        waiting -= entry->second.isSent ? 0 : 1;
    }
    entries.erase(entries.begin(), end);
    write([&] { statements->trim.run(number); });
}

}  // namespace ZorvNode
