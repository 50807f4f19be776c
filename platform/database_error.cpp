// What an error of the database means to its user, and what cures it.
#include "database.h"
#include "error_report.h"
#include "store_directory.h"

#include <set>
#include <sstream>
#include <unistd.h>

namespace host_store
{
namespace
{

// The processes that still read what later changes have replaced, so that LMDB can't use its pages
// again: those whose transaction is older than the last one. As words: "12 34".
std::string late_readers(MDB_env *lmdb)
{
    MDB_envinfo info;
    mdb_env_info(lmdb, &info);
    std::ostringstream lines;
    const auto append = [](const char *line, void *all) {
        *static_cast<std::ostringstream *>(all) << line;
        return 0;
    };
    mdb_reader_list(lmdb, append, &lines);
    std::istringstream rows(lines.str());
    std::set<long> processes;
    for (std::string row; std::getline(rows, row);) {
        std::istringstream words(row);
        long process = 0;
        std::string thread;
        std::size_t transaction = 0; // a dash when the thread is not reading
        if (words >> process >> thread >> transaction && transaction < info.me_last_txnid)
            processes.insert(process);
    }
    std::string names;
    for (const long process : processes)
        names += (names.empty() ? "" : " ") + std::to_string(process);
    return names;
}

std::string reason(int result, const std::string &readers)
{
    switch (result) {
    case store_is_full:
        return "the store is full";
    case MDB_MAP_FULL:
        return "no room is left for changes while these processes read and do not go on: " +
               readers;
    case EAGAIN: // LMDB locks a byte for the number of each process that reads
        return "a process of another PID namespace that reads the store has the number of this "
               "one, " +
               std::to_string(getpid());
    default:
        return mdb_strerror(result);
    }
}

std::string remedy(int result, const std::string &readers, const std::string &file)
{
    switch (result) {
    case store_is_full:
        return "unset some keys, or restart cmif-sim";
    case MDB_MAP_FULL:
        return "continue them (kill -CONT " + readers + ") or end them";
    case MDB_READERS_FULL:
        return "end some of the programs that use the store";
    case EAGAIN:
        return "start the program again, or give each container a CMIF_STORE of its own";
    case EIO: // LMDB returns it for a short write
    case ENOSPC:
    case EDQUOT:
        return "make room or " + std::string(store_hint);
    case MDB_INVALID:
    case MDB_CORRUPTED:
    case MDB_PAGE_NOTFOUND:
    case MDB_VERSION_MISMATCH:
    case MDB_PANIC:
        return "end the programs that use the store and delete " + file +
               "*; the saved configuration stays";
    default:
        return store_hint;
    }
}

} // namespace

bool check(int result, const Database &database)
{
    if (result == 0)
        return true;
    const std::string readers = result == MDB_MAP_FULL ? late_readers(database.lmdb) : "";
    if (result == MDB_MAP_FULL && readers.empty())
        result = store_is_full;
    report_error(database.file, reason(result, readers), remedy(result, readers, database.file));
    return false;
}

} // namespace host_store
