#include "provider_file.h"

#include "cmif/cmif.h"
#include "public_file.h"

#include <algorithm>
#include <unistd.h>

namespace daemons
{
namespace
{

// A quote, a parenthesis or a comma in a name would end the field or the entry for the list's
// readers.
std::string quoted(std::string name)
{
    std::erase_if(name, [](char c) { return c == '"' || c == '(' || c == ')' || c == ','; });
    return '"' + name + '"';
}

std::string entry(const Operator &found)
{
    std::string text = "(" + std::to_string(static_cast<int>(found.state));
    for (const std::string &name : {found.long_name, found.short_name, found.plmn})
        text.append(",").append(quoted(name));
    if (found.technology)
        text.append(",").append(std::to_string(static_cast<int>(*found.technology)));
    return text += ")";
}

} // namespace

// Shortest entry first: a reader that reuses one buffer for all entries, without clearing it, would
// find the rest of a longer entry after a shorter one.
std::string provider_list(const std::vector<Operator> &operators)
{
    std::vector<std::string> entries;
    entries.reserve(operators.size());
    for (const Operator &found : operators)
        entries.push_back(entry(found));
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto &one, const auto &other) { return one.size() < other.size(); });

    std::string list = "+COPS: ";
    for (const std::string &each : entries) {
        if (&each != &entries.front())
            list += ',';
        list += each;
    }
    return list += '\n';
}

bool write_provider_file(const std::vector<Operator> &operators)
{
    return write_public_file(CMIF_PROVIDER_LIST_FILE, provider_list(operators));
}

void remove_provider_file()
{
    unlink(CMIF_PROVIDER_LIST_FILE);
}

} // namespace daemons
