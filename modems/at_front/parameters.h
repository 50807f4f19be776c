// The values after the = of an AT command: numbers, quoted texts, and empty places.
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
    // Nothing when a quotation mark has no partner.
    static std::optional<Parameters> parse(std::string_view text);

    std::size_t count() const { return values_.size(); }
    bool has(std::size_t place) const { return place < values_.size() && values_[place]; }
    std::string text(std::size_t place) const { return has(place) ? *values_[place] : ""; }
    // Nothing for what is there but is not a number.
    std::optional<int> number(std::size_t place) const;
    std::optional<int> number(std::size_t place, int otherwise) const;
    // A number of this range, or `otherwise` for an empty place.
    std::optional<int> number(std::size_t place, int otherwise, int min, int max) const;

private:
    std::vector<std::optional<std::string>> values_; // nothing for an empty place
};

} // namespace at_front

#endif
