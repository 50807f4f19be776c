#include "wire_log.h"

#include <cstdio>
#include <string>

namespace daemons
{

void WireLog::request(long code, std::string_view name, std::string_view details) const
{
    if (!enabled_)
        return;
    std::fprintf(stderr, "%s -> %ld %.*s%s%.*s\n", channel_, code, static_cast<int>(name.size()),
                 name.data(), details.empty() ? "" : " ", static_cast<int>(details.size()),
                 details.data());
}

void WireLog::reply(long code, std::string_view name, CmeError error) const
{
    const int number = static_cast<int>(error);
    const CmeErrorText *text = find_cme_error(number);
    std::string answer = "ret_code=" + std::to_string(number);
    reply(code, name, answer.append(" (").append(text ? text->name : "?").append(")"));
}

void WireLog::reply(long code, std::string_view name, std::string_view answer) const
{
    if (!enabled_)
        return;
    std::fprintf(stderr, "%s <- %ld %.*s %.*s\n", channel_, code, static_cast<int>(name.size()),
                 name.data(), static_cast<int>(answer.size()), answer.data());
}

} // namespace daemons
