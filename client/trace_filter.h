// Cuts the library's output into lines and masks PINs, keys and passwords in them.
#ifndef CLIENT_TRACE_FILTER_H
#define CLIENT_TRACE_FILTER_H

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace client
{

// Shows one line, given without its newline. It holds whatever bytes the modem sent.
using LineSink = std::function<void(std::string_view line)>;

class TraceFilter
{
public:
    // `secret`: the texts of the request are PINs or keys.
    TraceFilter(bool secret, LineSink sink) : secret_(secret), sink_(std::move(sink)) {}

    void feed(std::string_view bytes);
    // Passes on a last line without a newline.
    void finish();

private:
    bool secret_;
    LineSink sink_;
    std::string pending_;
};

std::string mask_secrets(std::string_view line, bool secret);

} // namespace client

#endif
