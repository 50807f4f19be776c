#include "provider_list_run.h"

#include "bytes.h"
#include "files.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>

namespace
{
constexpr int noise = 0x5A;

cmif_provider_info record_of(const Provider &provider)
{
    cmif_provider_info info;
    memset(&info, noise, sizeof info);
    if (provider.oper_long)
        strcpy(info.oper_long, provider.oper_long->c_str());
    if (provider.oper_short)
        strcpy(info.oper_short, provider.oper_short->c_str());
    if (provider.oper_numeric)
        strcpy(info.oper_numeric, provider.oper_numeric->c_str());
    info.stat = provider.stat.value_or(info.stat);
    info.act = provider.act.value_or(info.act);
    return info;
}
} // namespace

ProviderListRun::ProviderListRun()
{
    memset(list.data(), noise, sizeof list);
}

ProviderListRun read_provider_list(const std::string &file)
{
    std::ofstream(provider_list_path, std::ios::binary) << file;
    return read_existing_provider_list();
}

ProviderListRun read_existing_provider_list()
{
    ProviderListRun reading;
    reading.run = record([&] { return shared_CMIF_GetNetworkProviderList(reading.list.data()); });
    return reading;
}

void expect_record(const cmif_provider_info &found, const Provider &provider)
{
    const cmif_provider_info expected = record_of(provider);
    EXPECT_EQ(found.stat, expected.stat);
    EXPECT_EQ(found.act, expected.act);
    EXPECT_EQ(bytes_of(found), bytes_of(expected));
}

void expect_reading(const ProviderListRun &reading, const std::string &text,
                    const std::vector<Group> &groups, const std::string &end)
{
    EXPECT_EQ(reading.run.result, 0);
    Lines lines{"File open read done.", "[shared_CMIF_GetNetworkProviderList]result = " + text};
    for (size_t i = 0; i < groups.size(); ++i) {
        SCOPED_TRACE(groups[i].line);
        lines.push_back("[" + std::to_string(i) + "]sub_result = [" + groups[i].line + "]");
        expect_record(reading.list.at(i), groups[i].provider);
    }
    for (size_t i = groups.size(); i < reading.list.size(); ++i)
        expect_record(reading.list.at(i), {});
    if (end != no_search)
        lines.push_back(end);
    EXPECT_EQ(reading.run.output, ::text(lines));
}

void expect_list(const std::string &file, const std::vector<Group> &groups, const std::string &end)
{
    SCOPED_TRACE(file.substr(0, 200));
    expect_reading(read_provider_list(file), file, groups, end);
}
