#include "provider_list.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{
// What is kept of each text, in characters.
constexpr size_t file_limit = 1023;
constexpr size_t group_limit = 127;
constexpr size_t number_limit = 7;
constexpr size_t name_limit = 19;

// The fields of a group. The comma that ends a field becomes a NUL in the buffer; commas in front
// of a field stay commas.
std::vector<std::string> split(std::string &buffer)
{
    std::vector<std::string> fields;
    size_t at = 0;
    while (true) {
        at = buffer.find_first_not_of(',', at);
        if (buffer[at] == '\0')
            return fields;
        const size_t end = buffer.find_first_of(std::string_view(",\0", 2), at);
        fields.push_back(buffer.substr(at, end - at));
        if (buffer[end] == '\0')
            return fields;
        buffer[end] = '\0';
        at = end + 1;
    }
}

int number(const std::string &field)
{
    return atoi(field.substr(0, number_limit).c_str());
}

// The rest of the field stays as it is.
void put_name(char *to, const std::string &field)
{
    const std::string name = reference::symbol_filter(field).copied.substr(0, name_limit);
    memcpy(to, name.c_str(), name.size() + 1);
}

void put_field(cmif_provider_info &info, size_t position, const std::string &field)
{
    if (position == 0)
        info.stat = number(field);
    if (position == 1)
        put_name(info.oper_long, field);
    if (position == 2)
        put_name(info.oper_short, field);
    if (position == 3)
        put_name(info.oper_numeric, field);
    if (position == 4)
        info.act = number(field);
}
} // namespace

reference::Filtered reference::symbol_filter(std::string_view source)
{
    const size_t open = source.find('"');
    if (open == std::string_view::npos)
        return {0, std::string(source)};
    const size_t close = source.find('"', open + 1);
    if (close == std::string_view::npos)
        return {-1, ""};
    return {0, std::string(source.substr(open + 1, close - open - 1))};
}

std::string reference::provider_list(std::string_view file, cmif_provider_info *list)
{
    const std::string kept(file.substr(0, file_limit));
    const std::string text = kept.substr(0, kept.find('\0'));
    std::string lines =
        "File open read done.\n[shared_CMIF_GetNetworkProviderList]result = " + text + "\n";
    if (text.find('(') == std::string::npos)
        return lines;

    std::string buffer(group_limit + 1, '\0'); // keeps what an earlier, longer group left
    size_t at = 0;
    for (size_t count = 0;; ++count) {
        const size_t open = text.find('(', at);
        if (open == std::string::npos)
            return lines + "ptr1 is null.\n";
        const size_t close = text.find(')', open);
        if (close == std::string::npos)
            return lines + "ptr2 is null.\n";
        const std::string group = text.substr(open + 1, close - open - 1).substr(0, group_limit);
        buffer.replace(0, group.size(), group);
        lines += "[" + std::to_string(count) + "]sub_result = [";
        lines += buffer.substr(0, buffer.find('\0')) + "]\n";
        const std::vector<std::string> fields = split(buffer);
        for (size_t i = 0; i < fields.size(); ++i)
            put_field(list[count], i, fields[i]);
        at = close + 1;
    }
}
