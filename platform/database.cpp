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
        return "unset some keys, or restart cmif-sim";
    case MDB_READERS_FULL:
        return "end some of the programs that use the store";
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

// A file shorter than its two meta pages never held anything: the process that created it was
// killed, or the disk was full. LMDB refuses such a file, but initializes an empty one.
void empty_unfinished(const std::string &file)
{
    struct stat found = {};
    if (stat(file.c_str(), &found) == 0 && found.st_size < 2 * sysconf(_SC_PAGESIZE))
        (void)!truncate(file.c_str(), 0); // if this fails, opening the file reports why
}

// Extends a file that was cut short: a read past its end would kill the process by SIGBUS, while
// LMDB detects zeros as damage.
int restore_length(MDB_env *lmdb, int descriptor)
{
    MDB_envinfo info;
    MDB_stat pages;
    struct stat file = {};
    mdb_env_info(lmdb, &info);
    mdb_env_stat(lmdb, &pages);
    if (fstat(descriptor, &file) != 0)
        return errno;
    if (info.me_last_pgno >= map_size / pages.ms_psize)
        return MDB_CORRUPTED;
    const auto needed = static_cast<off_t>((info.me_last_pgno + 1) * pages.ms_psize);
    return file.st_size < needed ? posix_fallocate(descriptor, 0, needed) : 0;
}

// LMDB leaves its descriptor open across exec.
int finish_opening(MDB_env *lmdb)
{
    int descriptor = -1;
    mdb_env_get_fd(lmdb, &descriptor);
    if (fcntl(descriptor, F_SETFD, FD_CLOEXEC) != 0)
        return errno;
    return restore_length(lmdb, descriptor);
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

bool check(int result, const std::string &file)
{
    if (result == 0)
        return true;
    const char *what = result == MDB_MAP_FULL ? "the store is full" : mdb_strerror(result);
    report_error(file, what, remedy(result, file));
    return false;
}

} // namespace host_store
