#include "providers.h"

#include "cmif/cmif.h"
#include "cmifctl/calls.h"

#include <algorithm>
#include <ctime>
#include <sys/stat.h>
#include <vector>

namespace cmifctl
{
namespace
{

constexpr std::size_t max_providers = 512; // more than the library ever writes

Json text_or_null(const char *text)
{
    return *text != '\0' ? Json(text) : Json();
}

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
    Answer answer =
        client::call(context.options, {.request = no_request("shared_CMIF_GetNetworkProviderList"),
                                       .body = read_providers});
    if (answer.result != CMIF_OK)
        throw Failure(Exit::no_file, "there is no provider list (" CMIF_PROVIDER_LIST_FILE ")",
                      "Search for operators first: 'cmifctl network scan'.");
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
