#include "running_store.h"

#include "open_store.h"
#include "saved_file.h"
#include "table.h"

namespace host_store
{
namespace
{

// Calls work(table) in a transaction, and commits if its result is 0. A writer looks whether the
// file that it is about to change is still the store's: otherwise no other process would see the
// change. That costs a system call, so readers don't look.
template <typename Work>
int attempt_with_table(const Database &store, unsigned flags, const Work &work)
{
    return transact(store, flags, [&](MDB_txn *transaction) {
        if ((flags & MDB_RDONLY) == 0 && was_replaced(store))
            return store_was_deleted;
        return work(Table{transaction, store.table});
    });
}

template <typename Work>
bool with_table(unsigned flags, const Work &work)
{
    const Database *store = open_store();
    int result = store_was_deleted;
    for (int tries = 0; tries < 2 && result == store_was_deleted; ++tries) {
        if (tries > 0) {
            leave_store(store);
            store = open_store();
        }
        if (store == nullptr)
            return false;
        result = attempt_with_table(*store, flags, work);
    }
    return check(result, *store);
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
    return with_table(MDB_RDONLY, [&](const Table &table) { return table.list(entries); });
}

bool reload_saved()
{
    return with_table(0, [](const Table &table) { return table.load(load_saved()); });
}

} // namespace host_store
