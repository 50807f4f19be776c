#include "value.h"

namespace modem_manager
{

Value::Value(GVariant *variant)
{
    if (!variant)
        return;
    if (g_variant_is_floating(variant))
        g_variant_ref_sink(variant);
    while (g_variant_is_of_type(variant, G_VARIANT_TYPE_VARIANT)) {
        GVariant *const inner = g_variant_get_variant(variant);
        g_variant_unref(variant);
        variant = inner;
    }
    variant_ = std::shared_ptr<GVariant>(variant, g_variant_unref);
}

std::string Value::text() const
{
    if (!variant_ || !(is(G_VARIANT_TYPE_STRING) || is(G_VARIANT_TYPE_OBJECT_PATH)))
        return "";
    return g_variant_get_string(get(), nullptr);
}

std::optional<long long> Value::number() const
{
    if (!variant_)
        return std::nullopt;
    switch (g_variant_classify(get())) {
    case G_VARIANT_CLASS_BYTE:
        return g_variant_get_byte(get());
    case G_VARIANT_CLASS_INT32:
        return g_variant_get_int32(get());
    case G_VARIANT_CLASS_UINT32:
        return g_variant_get_uint32(get());
    case G_VARIANT_CLASS_INT64:
        return g_variant_get_int64(get());
    case G_VARIANT_CLASS_UINT64:
        return static_cast<long long>(g_variant_get_uint64(get()));
    default:
        return std::nullopt;
    }
}

std::optional<double> Value::real() const
{
    if (!variant_ || !is(G_VARIANT_TYPE_DOUBLE))
        return std::nullopt;
    return g_variant_get_double(get());
}

std::optional<bool> Value::boolean() const
{
    if (!variant_ || !is(G_VARIANT_TYPE_BOOLEAN))
        return std::nullopt;
    return g_variant_get_boolean(get()) != FALSE;
}

std::vector<Value> Value::items() const
{
    std::vector<Value> all;
    if (!variant_ || !g_variant_is_container(get()))
        return all;
    for (std::size_t i = 0; i < g_variant_n_children(get()); ++i)
        all.emplace_back(g_variant_get_child_value(get(), i));
    return all;
}

Value Value::item(std::size_t index) const
{
    if (!variant_ || !g_variant_is_container(get()) || index >= g_variant_n_children(get()))
        return {};
    return Value(g_variant_get_child_value(get(), index));
}

Dictionary Value::dictionary() const
{
    Dictionary entries;
    for (const Value &entry : items())
        entries.emplace(entry.item(0).text(), entry.item(1));
    return entries;
}

std::vector<std::string> Value::texts() const
{
    std::vector<std::string> all;
    for (const Value &item : items())
        all.push_back(item.text());
    return all;
}

bool is_carried(std::string_view text)
{
    return text.find('\0') == std::string_view::npos &&
           g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr);
}

} // namespace modem_manager
