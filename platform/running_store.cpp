#include "running_store.h"

#include "open_store.h"
#include "saved_file.h"
#include "table.h"

namespace host_store
{
namespace
{

// Calls work(table) in a transaction, and commits if its result is 0.
template <typename Work>
bool with_table(unsigned flags, const Work &work)
{
    const Database *store = open_store();
    if (store == nullptr)
        return false;
    const int result = transact(*store, flags, [&](MDB_txn *transaction) {
        return work(Table{transaction, store->table});
    });
    return check(result, store->file);
}

} // namespace

bool is_open()
{
    return open_store() != nullptr;
}

bool read_value(std::string_view key, const std::function<void(std::string_view)> &use)
{
    return with_table(MDB_RDONLY, [&](const Table &table) {
        std::string_view value;
        const int result = table.find(key, value);
        if (result == 0)
            use(value);
        return result;
    });
}

bool write_value(std::string_view key, std::string_view value)
{
    return with_table(0, [&](const Table &table) { return table.change(key, value); });
}

bool read_all(Entries &entries)
{
    return with_table(MDB_RDONLY, [&](const Table &table) {
        entries.clear(); // a transaction may be tried twice
        return table.list(entries);
    });
}

bool reload_saved()
{
    return with_table(0, [](const Table &table) { return table.load(load_saved()); });
}

} // namespace host_store
