// symbol_filter, from and into memory of exactly the promised size.
#include "fuzz_store.h"
#include "tests/cmif/reference/provider_list.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    const std::string text = bytes.substr(0, bytes.find('\0'));
    const auto out = std::make_unique<char[]>(text.size());
    memset(out.get(), '?', text.size());

    const int result = symbol_filter(exactly(text).get(), out.get());

    const reference::Filtered expected = reference::symbol_filter(text);
    const std::string rest(text.size() - expected.copied.size(), '?');
    check(result == expected.result, "the result");
    check(std::string(out.get(), text.size()) == expected.copied + rest, "the copy");
    return 0;
}
