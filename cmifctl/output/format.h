// How the result is written, as the command line asks for it.
#ifndef CMIFCTL_OUTPUT_FORMAT_H
#define CMIFCTL_OUTPUT_FORMAT_H

#include <optional>
#include <string>
#include <vector>

namespace cmifctl
{

// Numbered as in enums::output_formats and enums::colours.
enum class Format { human, json, keyvalue };
enum class Colour { automatic, always, never };

struct OutputOptions {
    Format format = Format::human;
    Colour colour = Colour::automatic;
    std::vector<std::string> fields{}; // dotted paths into the document; empty: all of it
    std::optional<double> watch{};     // seconds from one reading to the next

    bool json() const { return format == Format::json; }
};

} // namespace cmifctl

#endif
