// The values after the = of an AT command: numbers, quoted texts, and empty fields.
#ifndef MODEMS_AT_FRONT_PARAMETERS_H
#define MODEMS_AT_FRONT_PARAMETERS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace at_front
{

class Parameters
{
public:
    Parameters() = default;
    // Returns nothing when a quotation mark is not closed.
    static std::optional<Parameters> parse(std::string_view text);

    std::size_t count() const { return values_.size(); }
    bool has(std::size_t index) const { return index < values_.size() && values_[index]; }
    std::string text(std::size_t index) const { return has(index) ? *values_[index] : ""; }
    // Return nothing for a field that is not a number.
    std::optional<int> number(std::size_t index) const;
    std::optional<int> number(std::size_t index, int otherwise) const;
    // A number of this range, or `otherwise` for an empty field.
    std::optional<int> number(std::size_t index, int otherwise, int min, int max) const;

private:
    std::vector<std::optional<std::string>> values_; // nothing for an empty field
};

} // namespace at_front

#endif
