#include "running_store.h"

#include "database.h"
#include "error_report.h"
#include "saved_file.h"
#include "store_directory.h"

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pthread.h>

namespace host_store
{

namespace
{

constexpr std::size_t data_limit = std::size_t{16} << 20;
constexpr std::string_view started("\0", 1); // set once loaded; no caller's key begins like this

// What this process has open, and what a forked child inherited.
struct Environment : Database {
    Environment *older = nullptr;
};

constinit std::atomic<Environment *> current{nullptr};

// A child must neither use nor close the parent's: the locks and the reader's place are the
// parent's. It stays where it is, out of use, and the child opens the store for itself.
void disown_in_child()
{
    static Environment *inherited = nullptr;
    Environment *parents = current.exchange(nullptr);
    if (parents == nullptr)
        return;
    parents->older = inherited;
    inherited = parents;
}

// When the library is loaded: a fork runs only what was registered before it began.
__attribute__((constructor)) void watch_forks()
{
    const int result = pthread_atfork(nullptr, nullptr, disown_in_child);
    if (result != 0)
        complain("pthread_atfork", std::strerror(result), "do not fork while the store is open");
}

// A file of its own for each run of the host, since nothing is synced.
std::string database_path()
{
    std::string run;
    std::ifstream("/proc/sys/kernel/random/boot_id") >> run;
    return store_directory() + "/running-" + run.substr(0, run.find('-')) + ".mdb";
}

void remove_older_runs(const std::string &file)
{
    if (file.ends_with("running-.mdb"))
        return; // not known to be of another run
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(store_directory(), error)) {
        const std::string path = entry.path();
        if (entry.path().filename().string().starts_with("running-") && !path.starts_with(file))
            std::filesystem::remove(path, error);
    }
}

int put(MDB_txn *transaction, MDB_dbi table, std::string_view key, std::string_view value)
{
    MDB_val key_val = as_val(key);
    MDB_val value_val = as_val(value);
    return mdb_put(transaction, table, &key_val, &value_val, 0);
}

bool is_full(MDB_txn *transaction, MDB_dbi table)
{
    MDB_stat used;
    return mdb_stat(transaction, table, &used) == 0 &&
           (used.ms_leaf_pages + used.ms_overflow_pages) * used.ms_psize >= data_limit;
}

// No value is no entry.
int change(MDB_txn *transaction, MDB_dbi table, std::string_view key, std::string_view value)
{
    if (!value.empty())
        return is_full(transaction, table) ? MDB_MAP_FULL : put(transaction, table, key, value);
    MDB_val key_val = as_val(key);
    const int result = mdb_del(transaction, table, &key_val, nullptr);
    return result == MDB_NOTFOUND ? 0 : result;
}

int load(MDB_txn *transaction, MDB_dbi table)
{
    int result = mdb_drop(transaction, table, 0);
    if (result == 0)
        result = put(transaction, table, started, "");
    for (const auto &[key, value] : load_saved()) {
        if (result == 0)
            result = change(transaction, table, key, value);
    }
    return result;
}

int find(MDB_txn *transaction, MDB_dbi table, std::string_view key, MDB_val &value)
{
    MDB_val key_val = as_val(key);
    return mdb_get(transaction, table, &key_val, &value);
}

// Whichever process comes first loads what was saved.
int start(Database &store)
{
    const auto look = [&store](MDB_txn *transaction) {
        MDB_val ignored;
        const int result = mdb_dbi_open(transaction, nullptr, 0, &store.table);
        return result != 0 ? result : find(transaction, store.table, started, ignored);
    };
    const int result = transact(store, MDB_RDONLY, look);
    if (result != MDB_NOTFOUND)
        return result;
    remove_older_runs(store.file);
    return transact(store, 0, [&](MDB_txn *transaction) {
        const int found = look(transaction);
        return found == MDB_NOTFOUND ? load(transaction, store.table) : found;
    });
}

Environment *open_store()
{
    const DirectoryLock directory;
    if (!directory.held() || current != nullptr)
        return current;
    auto store = std::make_unique<Environment>();
    store->file = database_path();
    int result = open_database(*store);
    if (result == 0)
        result = start(*store);
    if (!succeeded(result, store->file)) {
        mdb_env_close(store->lmdb);
        return nullptr;
    }
    current = store.release();
    return current;
}

Environment *environment()
{
    Environment *open = current.load(std::memory_order_acquire);
    return open != nullptr ? open : open_store();
}

} // namespace

bool is_open()
{
    return environment() != nullptr;
}

bool read_value(std::string_view key, const std::function<void(std::string_view)> &use)
{
    const Environment *store = environment();
    if (store == nullptr)
        return false;
    const int result = transact(*store, MDB_RDONLY, [&](MDB_txn *transaction) {
        MDB_val value = as_val("");
        const int found = find(transaction, store->table, key, value);
        if (found != 0 && found != MDB_NOTFOUND)
            return found;
        use(as_view(value));
        return 0;
    });
    return succeeded(result, store->file);
}

bool write_value(std::string_view key, std::string_view value)
{
    const Environment *store = environment();
    if (store == nullptr)
        return false;
    const int result = transact(*store, 0, [&](MDB_txn *transaction) {
        return change(transaction, store->table, key, value);
    });
    return succeeded(result, store->file);
}

bool read_all(Entries &entries)
{
    const Environment *store = environment();
    if (store == nullptr)
        return false;
    const int result = transact(*store, MDB_RDONLY, [&](MDB_txn *transaction) {
        entries.clear();
        MDB_cursor *cursor = nullptr;
        int next = mdb_cursor_open(transaction, store->table, &cursor);
        MDB_val key, value;
        while (next == 0 && (next = mdb_cursor_get(cursor, &key, &value, MDB_NEXT)) == 0) {
            if (as_view(key) != started)
                entries.emplace_back(as_view(key), as_view(value));
        }
        mdb_cursor_close(cursor);
        return next == MDB_NOTFOUND ? 0 : next;
    });
    return succeeded(result, store->file);
}

bool start_anew()
{
    const Environment *store = environment();
    return store != nullptr && succeeded(transact(*store, 0,
                                                  [store](MDB_txn *transaction) {
                                                      return load(transaction, store->table);
                                                  }),
                                         store->file);
}

} // namespace host_store
