// A value as it travels over D-Bus.
#ifndef MODEMS_MODEMMANAGER_VALUE_H
#define MODEMS_MODEMMANAGER_VALUE_H

#include "glib_ptr.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace modem_manager
{

class Value;
using Dictionary = std::map<std::string, Value, std::less<>>;

// Shared and never changed. Each way to read it gives nothing when the value is missing or of
// another type.
class Value
{
public:
    Value() = default;
    // Takes the reference over; a floating one, too. A value in a variant stands for itself.
    explicit Value(GVariant *variant);

    GVariant *get() const { return variant_.get(); }
    explicit operator bool() const { return variant_ != nullptr; }

    std::string text() const; // of an object path, too
    std::optional<long long> number() const;
    std::optional<double> real() const;
    std::optional<bool> boolean() const;

    std::vector<Value> items() const; // of an array, a tuple or an entry of a dictionary
    Value item(std::size_t index) const;
    Dictionary dictionary() const; // by text
    std::vector<std::string> texts() const;

private:
    bool is(const GVariantType *type) const { return g_variant_is_of_type(get(), type); }

    std::shared_ptr<GVariant> variant_;
};

// A missing value when there is no such entry.
inline Value find(const Dictionary &dictionary, std::string_view name)
{
    const auto entry = dictionary.find(name);
    return entry == dictionary.end() ? Value() : entry->second;
}

// Returns whether D-Bus can carry the text.
bool is_carried(std::string_view text);

// A dictionary to send, a{sv}, from floating values.
class Entries
{
public:
    Entries() { g_variant_builder_init(&builder_, G_VARIANT_TYPE_VARDICT); }
    ~Entries() { g_variant_builder_clear(&builder_); }
    Entries(const Entries &) = delete;
    Entries &operator=(const Entries &) = delete;

    void add(const char *name, GVariant *value)
    {
        g_variant_builder_add(&builder_, "{sv}", name, value);
    }
    void add(const char *name, const std::string &text)
    {
        add(name, g_variant_new_string(text.c_str()));
    }
    void add(const char *name, unsigned number) { add(name, g_variant_new_uint32(number)); }

    // A tuple of it, once.
    Value tuple()
    {
        GVariant *const all[] = {g_variant_builder_end(&builder_)};
        return Value(g_variant_new_tuple(all, 1));
    }

private:
    GVariantBuilder builder_{};
};

} // namespace modem_manager

#endif
