// Bounded reading of the configuration store.
//
// A pointer that the store returns is good until its next access, and a trace site may be that
// access: no pointer outlives the expression that reads it.
#ifndef CMIF_STORE_H
#define CMIF_STORE_H

#include "tarn_nvram_config.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace cmif
{

// Copies `text` to `out`, cut where `end` leaves room for the NUL alone; a null text is an empty
// one. Returns where the NUL stands.
inline char *copy_text(char *out, const char *end, const char *text)
{
    while (text && *text && out + 1 < end)
        *out++ = *text++;
    *out = '\0';
    return out;
}

template <std::size_t size>
void copy_text(char (&out)[size], const char *text)
{
    copy_text(out, out + size, text);
}

// The value of a key, copied and cut to `size` bytes with its NUL; the rest is zero.
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
