#include "trace_filter.h"

#include "cmifctl/output/text.h"

#include <cstdio>

namespace cmifctl
{

namespace
{

void show(const std::string &line)
{
    std::fprintf(stderr, "%s\n", safe(line).c_str());
}

} // namespace

std::string masked_line(std::string_view line, bool secret)
{
    const auto masked = [line](std::size_t kept) {
        return std::string(line.substr(0, kept)) + "****";
    };
    if (secret && line.starts_with("set_string"))
        return masked(line.find('=') + 1);
    constexpr std::string_view password = " password = ";
    if (const std::size_t at = line.find(password); at != std::string_view::npos)
        return masked(at + password.size());
    return std::string(line);
}

void TraceFilter::feed(std::string_view bytes)
{
    pending_ += bytes;
    for (std::size_t end = 0; (end = pending_.find('\n')) != std::string::npos;) {
        show(masked_line(std::string_view(pending_).substr(0, end), secret_));
        pending_.erase(0, end + 1);
    }
}

void TraceFilter::finish()
{
    if (!pending_.empty())
        show(masked_line(pending_, secret_));
    pending_.clear();
}

} // namespace cmifctl
