#include "stores/Schema.hpp"

namespace ZorvNode {

namespace {

constexpr std::int32_t zorv = 0x5A4F5256;  // "ZORV"

// AUTOINCREMENT: a number is never used again, not even that of the last row after it was deleted.
const char* const lists = R"(
CREATE TABLE lists (
    identity INTEGER PRIMARY KEY AUTOINCREMENT,
    name     TEXT NOT NULL UNIQUE,
    itemSize INTEGER NOT NULL
) STRICT;
CREATE TABLE items (
    number INTEGER PRIMARY KEY AUTOINCREMENT,
    list   INTEGER NOT NULL,
    data   BLOB NOT NULL
) STRICT;
)";

const char* const inbox = R"(
CREATE TABLE inbox (
    number       INTEGER PRIMARY KEY,
    notification TEXT NOT NULL
) STRICT;
)";

const char* const clients = R"(
CREATE TABLE clients (
    name  TEXT PRIMARY KEY,
    last  INTEGER NOT NULL,
    heard INTEGER NOT NULL
) STRICT;
)";

const char* const life = R"(
CREATE TABLE life (
    one      INTEGER PRIMARY KEY CHECK (one = 1),
    boot     TEXT NOT NULL,
    syncedAt INTEGER NOT NULL,
    ended    INTEGER NOT NULL
) STRICT;
)";

}  // namespace

const Schema& storeSchema()
{
    static const Schema schema = {zorv, {lists, inbox, clients, life}};
    return schema;
}

}  // namespace ZorvNode
