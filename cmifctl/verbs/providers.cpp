#include "providers.h"

#include "cmif/cmif.h"
#include "cmifctl/calls.h"

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
            {"status", enumeration(enums::provider_state, info.stat)},
            {"technology", enumeration(enums::provider_technology, info.act)}};
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

} // namespace

void report_providers(Context &context)
{
    Answer answer =
        client::call(context.options, {.request = no_request("shared_CMIF_GetNetworkProviderList"),
                                       .body = read_providers});
    if (answer.result != CMIF_OK)
        throw Failure(Exit::no_file, "there is no provider list (" CMIF_PROVIDER_LIST_FILE ")",
                      "Search for operators first: 'cmifctl network scan'.");
    context.report.table({"providers",
                          {{"code", "CODE"},
                           {"status", "STATUS"},
                           {"technology", "TECHNOLOGY"},
                           {"short_name", "SHORT"},
                           {"name", "NAME"}},
                          std::move(answer.output)});
}

} // namespace cmifctl
