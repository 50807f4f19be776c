#include "text_report.h"

#include "terminal_text.h"
#include "text_table.h"
#include "text_value.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace cmifctl
{
namespace
{

// "context.pdp_type" as "context pdp type".
std::string label_of(std::string key)
{
    std::replace_if(
        key.begin(), key.end(), [](char letter) { return letter == '_' || letter == '.'; }, ' ');
    return key;
}

std::string title(const Section &section)
{
    std::string text = label_of(section.key);
    constexpr const char *abbreviations[]{"sim", "sms"};
    const bool abbreviation = std::find(std::begin(abbreviations), std::end(abbreviations), text) !=
                              std::end(abbreviations);
    for (char &letter : text) {
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        if (!abbreviation)
            break;
    }
    return text;
}

std::string field_text(const Field &field)
{
    if (field.hidden)
        return "";
    if (!field.text.empty())
        return escape_controls(field.text, Lines::kept);
    const std::string text = value_text(field.value);
    return text.empty() || field.unit.empty() ? text : text + " " + field.unit;
}

struct Line {
    std::string label;
    std::string text;
};

std::vector<Line> lines_of(const Section &section)
{
    std::vector<Line> lines;
    for (const Field &field : section.fields)
        if (std::string text = field_text(field); !text.empty())
            lines.push_back(
                {label_of(field.label.empty() ? field.key : field.label), std::move(text)});
    return lines;
}

// "Title |   label: first line" and further lines under the first.
std::string section_text(const std::string &title, std::size_t title_width,
                         const std::vector<Line> &lines, std::size_t label_width, bool colour)
{
    std::string out;
    std::string left = "  " + bold(padded(title, title_width), colour);
    for (const Line &line : lines) {
        out += left + " | " + std::string(label_width - line.label.size(), ' ') + line.label + ": ";
        left = "  " + std::string(title_width, ' ');
        const std::string indent = left + " | " + std::string(label_width + 2, ' ');
        for (const char letter : line.text)
            out += letter == '\n' ? "\n" + indent : std::string(1, letter);
        out += "\n";
    }
    return out;
}

std::string sections_text(const std::vector<Section> &sections, bool colour)
{
    std::vector<std::pair<std::string, std::vector<Line>>> parts;
    std::size_t title_width = 0;
    std::size_t label_width = 0;
    for (const Section &section : sections) {
        parts.emplace_back(title(section), lines_of(section));
        title_width = std::max(title_width, parts.back().first.size());
        for (const Line &line : parts.back().second)
            label_width = std::max(label_width, line.label.size());
    }
    std::string out;
    for (const auto &[name, lines] : parts) {
        if (lines.empty())
            continue;
        out += "  " + std::string(title_width + 1 + label_width + 3, '-') + "\n";
        out += section_text(name, title_width, lines, label_width, colour);
    }
    return out;
}

} // namespace

std::string render_text(const Report &report, std::size_t columns, bool colour)
{
    std::string out = sections_text(report.sections(), colour);
    for (const Table &table : report.tables())
        out += render_table(table, columns, colour);
    return out + report.text();
}

} // namespace cmifctl
