/// A prepared statement, made once and run many times.
///
/// Parameters are bound in their order: a std::string or literal is a text, Blob bytes, everything else an integer below 2^63.
///
/// Threads:   any; runs under the database's lock.
/// Ownership: what is bound is used until the run ends, what a Row shows until the next row.
/// Failure:   StoreError.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace ZorvNode {

class Database;

struct Blob {
    const void* data;
    std::size_t size;
};

/// One row of a result; columns count from 0.
class Row {
public:
    explicit Row(sqlite3_stmt* statement) : stepped(statement) {}

    std::uint64_t number(int column) const;
    std::string text(int column) const;
    Blob bytes(int column) const;

private:
    sqlite3_stmt* const stepped;
};

class Statement {
public:
    Statement(Database& statementDatabase, const std::string& sql);
    ~Statement();

    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// To the end; rows are dropped. Outside a transaction what it changes is a transaction of its own.
    template <class... ValueT>
    void run(const ValueT&... values)
    {
        each([](const Row&) {}, values...);
    }

    /// Calls take(Row) for each row.
    template <class TakeT, class... ValueT>
    void each(const TakeT& take, const ValueT&... values)
    {
        const std::lock_guard<Database> lock(database);
        const Rewind atEnd{*this};
        [[maybe_unused]] int index = 0;
        (bind(++index, values), ...);
        while (step()) {
            take(Row(prepared));
        }
    }

private:
    struct Rewind {
        Statement& statement;
        ~Rewind() { statement.rewind(); }
    };

    void bind(int index, std::uint64_t value);
    void bind(int index, std::string_view value);
    void bind(int index, const Blob& value);
    void check(int code) const;
    bool step();
    void rewind();

    Database& database;
    sqlite3_stmt* prepared = nullptr;
};

}  // namespace ZorvNode
