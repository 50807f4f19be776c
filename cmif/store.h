// Bounded reading of the configuration store.
//
// A pointer that the store returns is valid until the next access to the store, which may be a
// trace site's: no pointer outlives the expression that reads it.
#ifndef CMIF_STORE_H
#define CMIF_STORE_H

#include "tarn_nvram_config.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace cmif
{

// Copies `text` to `out`, cut so that the NUL lies before `end`; a null pointer counts as "".
inline void copy_text(char *out, const char *end, const char *text)
{
    while (text && *text && out + 1 < end)
        *out++ = *text++;
    *out = '\0';
}

template <std::size_t size>
void copy_text(char (&out)[size], const char *text)
{
    copy_text(out, out + size, text);
}

// The value of a key, cut to `size` bytes including its NUL; the rest is zero.
template <std::size_t size>
class StoredText
{
public:
    explicit StoredText(const char *key) { copy_text(text_, tarnNvramConfig_get(key)); }

    bool is(const char *other) const { return std::strcmp(text_, other) == 0; }
    int number() const { return std::atoi(text_); }
    const char *text() const { return text_; }

private:
    char text_[size] = {};
};

} // namespace cmif

#endif
