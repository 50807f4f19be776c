// An LMDB file as this store uses one: opened so that a kill at any moment leaves it sound, its
// transactions, and what is to be done about its errors.
#ifndef PLATFORM_DATABASE_H
#define PLATFORM_DATABASE_H

#include <lmdb.h>
#include <string>
#include <string_view>

namespace host_store
{

struct Database {
    MDB_env *lmdb = nullptr;
    MDB_dbi table = 0;
    std::string file;
};

// Opens database.file, or makes it; LMDB's result. Only one process may be about it at a time:
// killed halfway with another one waiting, it would leave that one a table of readers that is not
// yet set up.
int open_database(Database &database);

// True for 0; false after a complaint.
bool succeeded(int result, const std::string &file);

inline MDB_val as_val(std::string_view text)
{
    return {text.size(), const_cast<char *>(text.data())}; // LMDB only reads it
}

inline std::string_view as_view(const MDB_val &val)
{
    return {static_cast<const char *>(val.mv_data), val.mv_size};
}

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

// Calls work(transaction) and commits if that is 0. Killed readers fill the table of readers and
// keep old pages from being used again until somebody looks after them.
template <typename Work>
int transact(const Database &database, unsigned flags, const Work &work)
{
    int result = attempt(database, flags, work);
    int dead = 0;
    if ((result == MDB_READERS_FULL || result == MDB_MAP_FULL) &&
        mdb_reader_check(database.lmdb, &dead) == 0 && dead > 0)
        result = attempt(database, flags, work);
    return result;
}

} // namespace host_store

#endif
