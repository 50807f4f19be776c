#include "stand_in.h"

#include <cerrno>
#include <cstring>
#include <sys/random.h>
#include <system_error>

namespace cmif_record
{
namespace
{

constexpr std::uint64_t rotated(std::uint64_t word, int bits)
{
    return (word << bits) | (word >> (64 - bits));
}

// SipHash-2-4 (Aumasson and Bernstein): cannot be inverted or guessed without the key.
class SipHash
{
public:
    explicit SipHash(const StandInKey &key)
        : v0_(key[0] ^ 0x736f6d6570736575), v1_(key[1] ^ 0x646f72616e646f6d),
          v2_(key[0] ^ 0x6c7967656e657261), v3_(key[1] ^ 0x7465646279746573)
    {
    }

    std::uint64_t of(std::string_view text)
    {
        const std::size_t whole = text.size() & ~std::size_t{7};
        for (std::size_t i = 0; i < whole; i += 8)
            absorb(word(text.substr(i, 8)));
        absorb(word(text.substr(whole)) | static_cast<std::uint64_t>(text.size()) << 56);
        v2_ ^= 0xff;
        rounds(4);
        return v0_ ^ v1_ ^ v2_ ^ v3_;
    }

private:
    static std::uint64_t word(std::string_view bytes)
    {
        std::uint64_t value = 0;
        for (std::size_t i = bytes.size(); i > 0; --i)
            value = value << 8 | static_cast<unsigned char>(bytes[i - 1]);
        return value;
    }
    void absorb(std::uint64_t block)
    {
        v3_ ^= block;
        rounds(2);
        v0_ ^= block;
    }
    void rounds(int count)
    {
        for (; count > 0; --count) {
            v0_ += v1_;
            v2_ += v3_;
            v1_ = rotated(v1_, 13) ^ v0_;
            v3_ = rotated(v3_, 16) ^ v2_;
            v0_ = rotated(v0_, 32);
            v2_ += v1_;
            v0_ += v3_;
            v1_ = rotated(v1_, 17) ^ v2_;
            v3_ = rotated(v3_, 21) ^ v0_;
            v2_ = rotated(v2_, 32);
        }
    }

    std::uint64_t v0_, v1_, v2_, v3_;
};

// The choices for one text, from its hash (the generator is SplitMix64).
class Choices
{
public:
    explicit Choices(std::uint64_t seed) : state_(seed) {}

    char from(std::string_view characters)
    {
        return characters[static_cast<std::size_t>(next() % characters.size())];
    }
    char continuation() { return static_cast<char>(0x80 | (next() & 0x3F)); }

private:
    std::uint64_t next()
    {
        state_ += 0x9e3779b97f4a7c15;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }

    std::uint64_t state_;
};

constexpr std::string_view digits = "0123456789";
constexpr std::string_view small_letters = "abcdefghijklmnopqrstuvwxyz";
constexpr std::string_view capital_letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view punctuation = "!#$&()*,-./:;<=>?@[]^_`{|}~\"'\\";

bool is_one_of(std::string_view characters, char c)
{
    return characters.find(c) != std::string_view::npos;
}

// The size of the character of UTF-8 that begins with this byte; 1 for any other byte.
std::size_t character_size(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    return byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
}

// Another valid character of UTF-8 of this size.
std::string other_character(std::size_t size, Choices &choices)
{
    constexpr std::string_view starts[] = {"", "\xC3", "\xE4\xB8", "\xF0\x9F\x98"};
    return std::string(starts[size - 1]) + choices.continuation();
}

char other_byte(char c, Choices &choices)
{
    for (const std::string_view set : {digits, small_letters, capital_letters, punctuation})
        if (is_one_of(set, c))
            return choices.from(set);
    return static_cast<unsigned char>(c) >= 0x80 ? choices.continuation() : c;
}

std::string drawn(std::string_view text, Choices choices)
{
    std::string out;
    while (out.size() < text.size()) {
        const std::string_view rest = text.substr(out.size());
        const std::size_t size = character_size(rest.front());
        if (size > 1 && size <= rest.size())
            out += other_character(size, choices);
        else
            out += other_byte(rest.front(), choices);
    }
    return out;
}

} // namespace

StandInKey random_key()
{
    StandInKey key;
    if (getrandom(key.data(), sizeof key, 0) != static_cast<ssize_t>(sizeof key))
        throw std::system_error(errno, std::generic_category(), "no random numbers");
    return key;
}

// A text that by chance stands for itself is drawn again.
std::string stand_in(const StandInKey &key, std::string_view text)
{
    constexpr std::uint64_t max_draws = 8;
    const std::uint64_t seed = SipHash(key).of(text);
    std::string out;
    for (std::uint64_t draw = 0; draw < max_draws; ++draw) {
        out = drawn(text, Choices(seed + draw));
        if (out != text)
            break;
    }
    return out;
}

} // namespace cmif_record
