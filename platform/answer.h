// The buffer behind the pointer that tarnNvramConfig_get returns.
#ifndef PLATFORM_ANSWER_H
#define PLATFORM_ANSWER_H

#include "host_store.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace host_store
{

// Each call poisons the previous answer, so that a program that keeps the pointer fails here, and
// not first on a router.
class Answer
{
public:
    void poison()
    {
        std::memset(text_.data(), '#', length_);
        text_[length_] = '\0';
    }
    const char *set(std::string_view value)
    {
        poison();
        const std::size_t length = std::min(value.size(), text_.size() - 1);
        std::memcpy(text_.data(), value.data(), length);
        text_[length] = '\0';
        length_ = std::max<std::size_t>(length, 1); // so that an empty answer is poisoned too
        return text_.data();
    }

private:
    std::array<char, host_store_value_limit + 1> text_{};
    std::size_t length_ = 0;
};

} // namespace host_store

#endif
