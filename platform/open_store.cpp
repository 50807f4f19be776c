#include "open_store.h"

#include "directory_lock.h"
#include "fork_handlers.h"
#include "saved_file.h"
#include "store_directory.h"
#include "table.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <memory>

namespace host_store
{

// Each run of the host has its own file: nothing is synced, so a file may be torn by a crash.
std::string database_path()
{
    std::string run;
    std::ifstream("/proc/sys/kernel/random/boot_id") >> run;
    return store_directory() + "/running-" + run.substr(0, run.find('-')) + ".mdb";
}

namespace
{

// A process's own database; linked to those that it inherited by forks.
struct OwnedDatabase : Database {
    OwnedDatabase *inherited = nullptr;
};

constinit std::atomic<OwnedDatabase *> current{nullptr};

// A child must neither use nor close its parent's database: the locks and the place in the reader
// table are the parent's. It keeps it unused, and opens the store itself.
void disown_in_child()
{
    static OwnedDatabase *disowned = nullptr;
    OwnedDatabase *parents = current.exchange(nullptr);
    if (parents == nullptr)
        return;
    parents->inherited = disowned; // so that leak checkers find it
    disowned = parents;
}

__attribute__((constructor)) void register_fork_handler()
{
    register_fork_handlers(nullptr, nullptr, disown_in_child);
}

void remove_older_runs(const std::string &file)
{
    if (file.ends_with("running-.mdb"))
        return; // this run is not known, so any file may be its own
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(store_directory(), error)) {
        const std::string path = entry.path();
        if (entry.path().filename().string().starts_with("running-") && !path.starts_with(file))
            std::filesystem::remove(path, error);
    }
}

// Opens the table. The first process of a run loads the saved configuration into it.
int open_table(Database &database)
{
    const int result = transact(database, MDB_RDONLY, [&database](MDB_txn *transaction) {
        const int opened = mdb_dbi_open(transaction, nullptr, 0, &database.table);
        return opened != 0 ? opened : Table{transaction, database.table}.is_loaded();
    });
    if (result != MDB_NOTFOUND)
        return result;
    remove_older_runs(database.file);
    return transact(database, 0, [&database](MDB_txn *transaction) {
        return Table{transaction, database.table}.load(load_saved());
    });
}

const Database *open_first()
{
    const DirectoryLock directory;
    if (!directory.held() || current != nullptr) // another thread may have opened it meanwhile
        return current;
    auto database = std::make_unique<OwnedDatabase>();
    database->file = database_path();
    int result = open_database(*database);
    if (result == 0)
        result = open_table(*database);
    if (!check(result, database->file)) {
        mdb_env_close(database->lmdb);
        return nullptr;
    }
    current = database.release();
    return current;
}

} // namespace

const Database *open_store()
{
    const Database *open = current.load(std::memory_order_acquire);
    return open != nullptr ? open : open_first();
}

} // namespace host_store
