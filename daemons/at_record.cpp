#include "at_record.h"

#include "printable.h"

#include <cstring>
#include <span>

namespace daemons
{
namespace
{

template <std::size_t size>
std::optional<std::string> bounded(const char (&field)[size])
{
    const std::size_t length = strnlen(field, size);
    if (length == size)
        return std::nullopt;
    return std::string(field, length);
}

std::optional<std::string> read_field(AtFieldSlot slot, const cmif_msg &record)
{
    switch (slot) {
    case AtFieldSlot::string1:
        return bounded(record.set_string);
    case AtFieldSlot::string2:
        return bounded(record.set_string2);
    case AtFieldSlot::string3:
        return bounded(record.set_string3);
    case AtFieldSlot::value:
        return bounded(record.set_value);
    case AtFieldSlot::first_byte:
        return std::to_string(static_cast<unsigned char>(record.set_string[0]));
    case AtFieldSlot::none:
        break;
    }
    return "";
}

} // namespace

std::optional<AtArguments> decode(const AtForm &form, const cmif_msg &record)
{
    AtArguments arguments;
    for (const AtField &field : form.fields) {
        if (field.slot == AtFieldSlot::none)
            break;
        std::optional<std::string> text = read_field(field.slot, record);
        if (!text)
            return std::nullopt;
        arguments.push_back(*std::move(text));
    }
    return arguments;
}

std::string describe(const AtForm &form, const AtArguments &arguments)
{
    std::string out;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const AtField &field = std::span(form.fields)[i];
        out.append(i ? " " : "").append(field.label).append("=\"");
        out.append(field.secret ? "****" : printable(arguments[i])).append("\"");
    }
    return out;
}

} // namespace daemons
