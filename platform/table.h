// The database's table of keys and values, within a transaction. All results are
// those of database.h.
#ifndef PLATFORM_TABLE_H
#define PLATFORM_TABLE_H

#include "saved_text.h"

#include <lmdb.h>
#include <string_view>

namespace host_store
{

// A table that has been loaded has a mark. One that has lost it belongs to a deleted store: find()
// notices that when it finds nothing, and list() always.
struct Table {
    MDB_txn *transaction;
    MDB_dbi number;

    // `value` is then a view into the database, valid as long as the transaction; "" if unset.
    int find(std::string_view key, std::string_view &value) const;
    // Sets the key, or removes it if `value` is empty.
    int change(std::string_view key, std::string_view value) const;
    // Appends all entries, sorted by key; none if the result is store_was_deleted.
    int list(Entries &entries) const;
    // Replaces everything by `entries`, and marks the table as loaded.
    int load(const Entries &entries) const;
    // Removes everything, the mark too.
    int empty() const;
    // 0 if the table is marked as loaded, otherwise store_was_deleted: it may also be new.
    int check_loaded() const;
};

} // namespace host_store

#endif
