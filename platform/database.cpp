#include "database.h"

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

int descriptor_of(MDB_env *lmdb)
{
    int descriptor = -1;
    mdb_env_get_fd(lmdb, &descriptor);
    return descriptor;
}

// LMDB leaves its descriptor open across exec.
int finish_opening(Database &database)
{
    const int descriptor = descriptor_of(database.lmdb);
    struct stat file = {};
    if (fcntl(descriptor, F_SETFD, FD_CLOEXEC) != 0 || fstat(descriptor, &file) != 0)
        return errno;
    database.device = file.st_dev;
    database.number = file.st_ino;
    return restore_length(database.lmdb, descriptor);
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
    return result == 0 ? finish_opening(database) : result;
}

// A path that can't be followed, after a change of rights for example, proves nothing.
bool was_replaced(const Database &database)
{
    struct stat file = {};
    if (stat(database.file.c_str(), &file) != 0)
        return errno == ENOENT || errno == ENOTDIR;
    return file.st_dev != database.device || file.st_ino != database.number;
}

bool was_removed(const Database &database)
{
    struct stat file = {};
    return fstat(descriptor_of(database.lmdb), &file) == 0 && file.st_nlink == 0;
}

} // namespace host_store
