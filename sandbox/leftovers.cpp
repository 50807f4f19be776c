#include "leftovers.h"

#include "check.h"
#include "cmif/cmif.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/msg.h>
#include <sys/stat.h>
#include <vector>

namespace sandbox
{
namespace
{

namespace fs = std::filesystem;

constexpr key_t queue_keys[] = {
    CMIF_AT_REQUEST_KEY,
    CMIF_AT_REPLY_KEY,
    CMIF_QMI_REQUEST_KEY,
    CMIF_QMI_REPLY_KEY,
};
constexpr const char *files[] = {
    CMIF_QMI_READY_FILE, CMIF_PROFILE_BUSY_FILE, CMIF_PROVIDER_LIST_FILE,
    CMIF_LOG_FILE,       CMIF_LOG_FILE_1,        CMIF_LOG_FILE_2,
};

std::vector<key_t> queues_found()
{
    std::vector<key_t> found;
    for (const key_t key : queue_keys)
        if (msgget(key, 0) != -1 || errno == EACCES)
            found.push_back(key);
    return found;
}

std::vector<std::string> files_found()
{
    std::vector<std::string> found;
    std::error_code ignored;
    for (const char *file : files)
        if (fs::exists(fs::symlink_status(file, ignored)))
            found.emplace_back(file);
    return found;
}

} // namespace

bool report_leftovers()
{
    std::string names, remedies;
    for (const key_t key : queues_found()) {
        names += " queue " + std::to_string(key) + ",";
        remedies += " ipcrm -Q " + std::to_string(key) + ";";
    }
    for (const std::string &file : files_found()) {
        names += " " + file + ",";
        remedies += " rm " + file + ";";
    }
    if (names.empty())
        return false;
    names.back() = ';';
    remedies.pop_back();
    log_line("already in use:" + names +
             " end the program that uses it, or remove what it left:" + remedies);
    return true;
}

void remove_leftovers()
{
    for (const key_t key : queues_found())
        msgctl(msgget(key, 0), IPC_RMID, nullptr);
    std::error_code ignored;
    for (const std::string &file : files_found())
        fs::remove_all(file, ignored); // in case it is a directory
}

DataFolder::DataFolder() : created_(mkdir("/data", 0777) == 0)
{
    if (created_)
        chmod("/data", 0777); // whatever the umask
    else if (errno != EEXIST)
        log_line(std::string("no /data for the debug log: ") + std::strerror(errno));
}

DataFolder::~DataFolder()
{
    std::error_code ignored;
    if (created_)
        fs::remove_all("/data", ignored);
}

} // namespace sandbox
