#include "stores/Statement.hpp"

#include <sqlite3.h>

#include "stores/Database.hpp"

namespace ZorvNode {

std::uint64_t Row::number(int column) const
{
    return static_cast<std::uint64_t>(sqlite3_column_int64(stepped, column));
}

std::string Row::text(int column) const
{
    const Blob found = bytes(column);
    return {static_cast<const char*>(found.data), found.size};
}

Blob Row::bytes(int column) const
{
    const void* data = sqlite3_column_blob(stepped, column);
    return {data != nullptr ? data : "", static_cast<std::size_t>(sqlite3_column_bytes(stepped, column))};
}

Statement::Statement(Database& statementDatabase, const std::string& sql) : database(statementDatabase)
{
    const std::lock_guard<Database> lock(database);
    check(sqlite3_prepare_v3(database.handle.get(), sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
}

Statement::~Statement()
{
    const std::lock_guard<Database> lock(database);
    sqlite3_finalize(prepared);
}

void Statement::bind(int index, std::uint64_t value)
{
    check(sqlite3_bind_int64(prepared, index, static_cast<sqlite3_int64>(value)));
}

void Statement::bind(int index, std::string_view value)
{
    check(sqlite3_bind_text64(prepared, index, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::bind(int index, const Blob& value)
{
    check(sqlite3_bind_blob64(prepared, index, value.data, value.size, SQLITE_STATIC));
}

bool Statement::step()
{
    const int code = sqlite3_step(prepared);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        throw database.failure(code);
    }
    return code == SQLITE_ROW;
}

void Statement::rewind()
{
    sqlite3_reset(prepared);  // its code is that of the last step again
    sqlite3_clear_bindings(prepared);
}

void Statement::check(int code) const
{
    if (code != SQLITE_OK) {
        throw database.failure(code);
    }
}

}  // namespace ZorvNode
