// All values that the store gives, as rows: where they are shown, where they come from, their form.
#ifndef CMIFCTL_VERBS_READING_ROWS_H
#define CMIFCTL_VERBS_READING_ROWS_H

#include "cmifctl/output/enums.h"

#include <span>
#include <variant>

namespace cmifctl
{

enum class Form { text, number, code, flag, seconds };

struct Reading {
    using TextGetter = int (*)(char *);
    using CodeGetter = int (*)(int *);

    const char *section;
    const char *key;
    const char *stored; // the store's key; without a value there the reading is unknown
    std::variant<std::monostate, TextGetter, CodeGetter> getter{}; // none: the stored text itself
    Form form = Form::text;
    const char *unit = "";
    EnumTable table{};
};

std::span<const Reading> all_readings();

} // namespace cmifctl

#endif
