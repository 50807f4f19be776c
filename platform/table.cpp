#include "table.h"

#include "database.h"

namespace host_store
{
namespace
{

constexpr std::size_t data_limit = std::size_t{16} << 20;
constexpr std::string_view loaded("\0", 1); // the mark's key; no caller's key contains a NUL

MDB_val as_val(std::string_view text)
{
    return {text.size(), const_cast<char *>(text.data())}; // LMDB only reads it
}

std::string_view as_view(const MDB_val &val)
{
    return {static_cast<const char *>(val.mv_data), val.mv_size};
}

int put(const Table &table, std::string_view key, std::string_view value)
{
    MDB_val key_val = as_val(key);
    MDB_val value_val = as_val(value);
    return mdb_put(table.transaction, table.number, &key_val, &value_val, 0);
}

int remove(const Table &table, std::string_view key)
{
    MDB_val key_val = as_val(key);
    const int result = mdb_del(table.transaction, table.number, &key_val, nullptr);
    return result == MDB_NOTFOUND ? 0 : result;
}

// The limit is far below the size of the map, so that there are always free pages for a removal.
bool is_full(const Table &table)
{
    MDB_stat used;
    return mdb_stat(table.transaction, table.number, &used) == 0 &&
           (used.ms_leaf_pages + used.ms_overflow_pages) * used.ms_psize >= data_limit;
}

} // namespace

int Table::find(std::string_view key, std::string_view &value) const
{
    MDB_val key_val = as_val(key);
    MDB_val found = as_val("");
    const int result = mdb_get(transaction, number, &key_val, &found);
    value = as_view(found);
    return result == MDB_NOTFOUND ? check_loaded() : result;
}

int Table::change(std::string_view key, std::string_view value) const
{
    if (value.empty())
        return remove(*this, key);
    return is_full(*this) ? store_is_full : put(*this, key, value);
}

int Table::list(Entries &entries) const
{
    MDB_cursor *cursor = nullptr;
    int result = check_loaded();
    if (result == 0)
        result = mdb_cursor_open(transaction, number, &cursor);
    MDB_val key, value;
    while (result == 0 && (result = mdb_cursor_get(cursor, &key, &value, MDB_NEXT)) == 0) {
        if (as_view(key) != loaded)
            entries.emplace_back(as_view(key), as_view(value));
    }
    mdb_cursor_close(cursor);
    return result == MDB_NOTFOUND ? 0 : result;
}

int Table::load(const Entries &entries) const
{
    int result = empty();
    if (result == 0)
        result = put(*this, loaded, "");
    for (const auto &[key, value] : entries) {
        if (result == 0)
            result = change(key, value);
    }
    return result;
}

int Table::empty() const
{
    return mdb_drop(transaction, number, 0);
}

int Table::check_loaded() const
{
    MDB_val key_val = as_val(loaded);
    MDB_val ignored;
    const int result = mdb_get(transaction, number, &key_val, &ignored);
    return result == MDB_NOTFOUND ? store_was_deleted : result;
}

} // namespace host_store
