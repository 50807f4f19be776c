#include "open_store.h"

#include "directory_lock.h"
#include "error_report.h"
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

// A process's own database; linked to those that it does not use any more.
struct OwnedDatabase : Database {
    OwnedDatabase *older = nullptr;
};

constinit std::atomic<OwnedDatabase *> current{nullptr};

// Takes the database out of use, without closing it: other threads may be reading from it. Returns
// it; null if another thread has been quicker.
OwnedDatabase *retire(const Database *used)
{
    static constinit std::atomic<OwnedDatabase *> retired{nullptr}; // leak checkers find them here
    OwnedDatabase *database = current;
    if (database == nullptr || database != used ||
        !current.compare_exchange_strong(database, nullptr))
        return nullptr;
    while (!retired.compare_exchange_weak(database->older, database)) {}
    return database;
}

// A child must neither use nor close its parent's database: the locks and the place in the reader
// table are the parent's. It opens the store itself.
void disown_in_child()
{
    retire(current);
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
        return opened != 0 ? opened : Table{transaction, database.table}.check_loaded();
    });
    if (result != store_was_deleted) // as a new one looks
        return result;
    remove_older_runs(database.file);
    return transact(database, 0, [&database](MDB_txn *transaction) {
        return Table{transaction, database.table}.load(load_saved());
    });
}

const Database *open_first()
{
    const DirectoryLock directory(Turn::opening);
    if (!directory.held() || current != nullptr) // another thread may have opened it meanwhile
        return current;
    auto database = std::make_unique<OwnedDatabase>();
    database->file = database_path();
    int result = open_database(*database);
    if (result == 0)
        result = open_table(*database);
    if (!check(result, *database)) {
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

// A deleted database is emptied, so that the other processes that have it open notice, too. One
// that was moved is left as it is: it may come back.
void leave_store(const Database *store)
{
    const OwnedDatabase *left = retire(store);
    if (left == nullptr)
        return;
    if (was_removed(*left))
        transact(*left, 0, [left](MDB_txn *transaction) {
            return Table{transaction, left->table}.empty();
        });
    report_error(left->file, "was deleted while it was in use",
                 "continuing with a new one, loaded from saved.conf; restart cmif-sim");
}

} // namespace host_store
