#include "providers.h"

#include "client/file.h"
#include "cmif/cmif.h"
#include "cmifctl/calls.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>

namespace cmifctl
{
namespace
{

constexpr std::size_t max_providers = 512; // more than the library ever writes

Json provider(const cmif_provider_info &info)
{
    return {{"code", text_or_null(info.oper_numeric)},
            {"name", text_or_null(info.oper_long)},
            {"short_name", text_or_null(info.oper_short)},
            {"status", enumeration(enums::provider_status, info.stat)},
            {"technology", enumeration(enums::technology, info.act)}};
}

// The groups at the end of the modem's answer are ranges of numbers, without a name or code.
int read_providers(Json &output)
{
    std::vector<cmif_provider_info> list(max_providers);
    const int result = shared_CMIF_GetNetworkProviderList(list.data());
    output = Json::array();
    for (const cmif_provider_info &info : list)
        if (*info.oper_numeric != '\0' || *info.oper_long != '\0' || *info.oper_short != '\0')
            output.push_back(provider(info));
    return result;
}

[[noreturn]] void fail_missing()
{
    throw Failure(Exit::no_file, "there is no provider list (" CMIF_PROVIDER_LIST_FILE ")",
                  "Search for operators first: 'cmifctl network scan'.");
}

[[noreturn]] void fail_unreadable(const std::string &reason, const char *hint)
{
    throw Failure(Exit::other,
                  "the provider list " CMIF_PROVIDER_LIST_FILE " can't be read: " + reason, hint);
}

// To the library, a list that it can't open is missing, and a FIFO is an empty list.
void require_list()
{
    const client::File list(open(CMIF_PROVIDER_LIST_FILE, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const int error = errno;
    struct stat found {
    };
    if (!list && error == ENOENT)
        fail_missing();
    if (!list)
        fail_unreadable(std::strerror(error),
                        "Run it as root or as the user of the AT daemon, which wrote the list.");
    if (fstat(list.fd(), &found) != 0 || !S_ISREG(found.st_mode))
        fail_unreadable("it is not a regular file", "Remove it: rm -r " CMIF_PROVIDER_LIST_FILE
                                                    "; then search: 'cmifctl network scan'.");
}

// A list of long ago may name operators that are out of reach now.
void report_age(Context &context)
{
    struct stat file {
    };
    if (stat(CMIF_PROVIDER_LIST_FILE, &file) == 0)
        context.report.data("age_s", std::max<long long>(0, std::time(nullptr) - file.st_mtime));
}

} // namespace

void report_providers(Context &context)
{
    require_list();
    Answer answer =
        client::call(context.options, {.request = no_request("shared_CMIF_GetNetworkProviderList"),
                                       .body = read_providers});
    if (answer.result != CMIF_OK)
        fail_missing();
    report_age(context);
    Table table{"providers",
                {{"code", "CODE"},
                 {"status", "STATUS"},
                 {"technology", "TECHNOLOGY"},
                 {"short_name", "SHORT"},
                 {"name", "NAME"}},
                std::move(answer.output)};
    for (const Json &row : table.rows)
        table.shown.push_back(
            {{"status", enumeration_text(enums::provider_status, row["status"]["code"])},
             {"technology", enumeration_text(enums::technology, row["technology"]["code"])}});
    context.report.table(std::move(table));
}

} // namespace cmifctl
