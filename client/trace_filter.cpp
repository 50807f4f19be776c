#include "trace_filter.h"

namespace client
{
namespace
{

std::string mask_after(std::string_view line, std::size_t kept)
{
    return std::string(line.substr(0, kept)) + "****";
}

} // namespace

std::string mask_secrets(std::string_view line, bool secret)
{
    if (secret && line.starts_with("set_string"))
        return mask_after(line, line.find('=') + 1);
    constexpr std::string_view password = " password = ";
    if (const std::size_t at = line.find(password); at != std::string_view::npos)
        return mask_after(line, at + password.size());
    return std::string(line);
}

void TraceFilter::feed(std::string_view bytes)
{
    pending_ += bytes;
    for (std::size_t end = 0; (end = pending_.find('\n')) != std::string::npos;) {
        sink_(mask_secrets(std::string_view(pending_).substr(0, end), secret_));
        pending_.erase(0, end + 1);
    }
}

void TraceFilter::finish()
{
    if (!pending_.empty())
        sink_(mask_secrets(pending_, secret_));
    pending_.clear();
}

} // namespace client
