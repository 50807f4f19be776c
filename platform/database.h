// An LMDB file as this store uses it: opening one so that it is sound after a process was killed at
// any moment, transactions, and remedies for its errors.
#ifndef PLATFORM_DATABASE_H
#define PLATFORM_DATABASE_H

#include <cerrno>
#include <lmdb.h>
#include <string>
#include <sys/types.h>

namespace host_store
{

struct Database {
    MDB_env *lmdb = nullptr;
    MDB_dbi table = 0;
    std::string file;
    dev_t device = 0; // these two identify the file that is open
    ino_t number = 0;
};

// Results beside LMDB's own, which are negative or errors of the system that it meets.
inline constexpr int store_is_full = EFBIG;      // all values together have reached their limit
inline constexpr int store_was_deleted = ESTALE; // while this process had it open

// Opens database.file, or creates it. LMDB's result; on an error, database.lmdb is still to be
// closed. The caller makes sure that only one process opens the file at a time: if one were killed
// here while another waited, the other would get a reader table that is not yet set up.
int open_database(Database &database);

// Whether another file, or none, is where the open one was.
bool was_replaced(const Database &database);
// Whether the open file has no name any more.
bool was_removed(const Database &database);

// Whether `result` is 0; if not, reports it as an error of the database.
bool check(int result, const Database &database);

template <typename Work>
int attempt(const Database &database, unsigned flags, const Work &work)
{
    MDB_txn *transaction = nullptr;
    int result = mdb_txn_begin(database.lmdb, nullptr, flags, &transaction);
    if (result != 0)
        return result;
    result = work(transaction);
    if (result == 0)
        return mdb_txn_commit(transaction);
    mdb_txn_abort(transaction);
    return result;
}

// Calls work(transaction), and commits if its result is 0. Readers that were killed stay in LMDB's
// reader table, and keep the pages that they read from being reused, until they are cleared.
template <typename Work>
int transact(const Database &database, unsigned flags, const Work &work)
{
    const int result = attempt(database, flags, work);
    int dead = 0;
    if ((result == MDB_READERS_FULL || result == MDB_MAP_FULL) &&
        mdb_reader_check(database.lmdb, &dead) == 0 && dead > 0)
        return attempt(database, flags, work);
    return result;
}

} // namespace host_store

#endif
