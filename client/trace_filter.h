// The library's own lines on their way to the user, without PINs and passwords.
#ifndef CLIENT_TRACE_FILTER_H
#define CLIENT_TRACE_FILTER_H

#include <string>
#include <string_view>

namespace cmifctl
{

// The line as it may be seen. `secret`: the request's texts are PINs or keys.
std::string masked_line(std::string_view line, bool secret);

// Cuts a stream into lines, masks them and writes them to standard error.
class TraceFilter
{
public:
    explicit TraceFilter(bool secret) : secret_(secret) {}
    void feed(std::string_view bytes);
    void finish();

private:
    bool secret_;
    std::string pending_;
};

} // namespace cmifctl

#endif
