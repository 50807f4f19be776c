#include "database.h"

#include "error_report.h"
#include "store_directory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host_store
{

namespace
{

constexpr unsigned reader_limit = 512; // threads of all processes together
constexpr std::size_t map_size = std::size_t{64} << 20;

std::string remedy(int result, const std::string &file)
{
    switch (result) {
    case MDB_MAP_FULL:
        return "unset some keys, or start the router anew";
    case MDB_READERS_FULL:
        return "end some of the programs that use the store";
    case EIO: // LMDB's own word for a write that was cut short
    case ENOSPC:
    case EDQUOT:
        return "make room or " + std::string(choose_another);
    case MDB_INVALID:
    case MDB_CORRUPTED:
    case MDB_PAGE_NOTFOUND:
    case MDB_VERSION_MISMATCH:
    case MDB_PANIC:
        return "end the programs that use the store and delete " + file + "*; what was saved stays";
    default:
        return choose_another;
    }
}

// A file shorter than its two head pages never held anything: who made it was killed, or the disk
// was full. LMDB starts an empty one over.
void empty_unfinished(const std::string &file)
{
    struct stat found = {};
    if (stat(file.c_str(), &found) == 0 && found.st_size < 2 * sysconf(_SC_PAGESIZE))
        (void)!truncate(file.c_str(), 0); // opening it says what is wrong
}

// A file that was cut short is filled up: reading past its end would kill the process, while
// zeroes are noticed as damage. LMDB leaves it open across exec, too.
int finish_opening(MDB_env *lmdb)
{
    MDB_envinfo info;
    MDB_stat pages;
    int descriptor = -1;
    struct stat file = {};
    mdb_env_info(lmdb, &info);
    mdb_env_stat(lmdb, &pages);
    mdb_env_get_fd(lmdb, &descriptor);
    if (fcntl(descriptor, F_SETFD, FD_CLOEXEC) != 0 || fstat(descriptor, &file) != 0)
        return errno;
    if (info.me_last_pgno >= map_size / pages.ms_psize)
        return MDB_CORRUPTED;
    const auto needed = static_cast<off_t>((info.me_last_pgno + 1) * pages.ms_psize);
    return file.st_size < needed ? posix_fallocate(descriptor, 0, needed) : 0;
}

} // namespace

int open_database(Database &database)
{
    empty_unfinished(database.file);
    int result = mdb_env_create(&database.lmdb);
    if (result == 0)
        result = mdb_env_set_maxreaders(database.lmdb, reader_limit);
    if (result == 0)
        result = mdb_env_set_mapsize(database.lmdb, map_size);
    if (result == 0)
        result = mdb_env_open(database.lmdb, database.file.c_str(), MDB_NOSUBDIR | MDB_NOSYNC,
                              S_IRUSR | S_IWUSR);
    return result == 0 ? finish_opening(database.lmdb) : result;
}

bool succeeded(int result, const std::string &file)
{
    if (result == 0)
        return true;
    const char *what = result == MDB_MAP_FULL ? "the store is full" : mdb_strerror(result);
    complain(file, what, remedy(result, file));
    return false;
}

} // namespace host_store
