#include "text_report.h"

#include "text.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace cmifctl
{

namespace
{

std::string blanks_for_underscores(std::string text)
{
    std::replace(text.begin(), text.end(), '_', ' ');
    return text;
}

std::string title(const Section &section)
{
    std::string text = blanks_for_underscores(section.key);
    constexpr const char *abbreviations[]{"sim", "sms", "qmi"};
    const bool abbreviation = std::find(std::begin(abbreviations), std::end(abbreviations), text) !=
                              std::end(abbreviations);
    for (char &letter : text) {
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        if (!abbreviation)
            break;
    }
    return text;
}

std::string value_text(const Json &value)
{
    if (value.is_string())
        return safe(value.get_ref<const std::string &>(), Lines::kept);
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    if (value.is_object() && value.contains("name"))
        return value_text(value["name"].is_null() ? value["code"] : value["name"]);
    return value.is_null() ? "" : value.dump();
}

std::string people_text(const Field &field)
{
    if (field.hidden)
        return "";
    if (!field.text.empty())
        return safe(field.text, Lines::kept);
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
        if (std::string text = people_text(field); !text.empty())
            lines.push_back({blanks_for_underscores(field.key), std::move(text)});
    return lines;
}

std::string bold(const std::string &text, bool colour)
{
    return colour ? "\033[1m" + text + "\033[0m" : text;
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

const Json &cell(const Table &table, std::size_t row, const std::string &key)
{
    const bool replaced = row < table.shown.size() && table.shown[row].contains(key);
    return replaced ? table.shown[row][key] : table.rows[row].at(key);
}

// On a narrow terminal the last column keeps a few characters, at the cost of the widest others.
void make_room_for_last(std::vector<std::size_t> &widths, std::size_t columns)
{
    constexpr std::size_t least = 8;
    constexpr std::size_t between = 2;
    const auto others_end = widths.end() - 1;
    const std::size_t needed = std::min(widths.back(), least);
    for (;;) {
        const std::size_t taken =
            std::accumulate(widths.begin(), others_end, between * (widths.size() - 1));
        const auto widest = std::max_element(widths.begin(), others_end);
        if (taken + needed <= columns || widest == others_end || *widest <= least)
            return;
        --*widest;
    }
}

std::string table_text(const Table &table, std::size_t columns, bool colour)
{
    std::vector<std::vector<std::string>> rows(1);
    for (const Column &column : table.columns)
        rows.front().push_back(column.title);
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        rows.emplace_back();
        for (const Column &column : table.columns)
            rows.back().push_back(safe(value_text(cell(table, i, column.key))));
    }
    std::vector<std::size_t> widths(table.columns.size(), 0);
    for (const auto &row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], width(row[i]));

    if (columns > 0)
        make_room_for_last(widths, columns);

    std::string out;
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            line += padded(cut(row[i], widths[i]), widths[i]) + "  ";
        line += row.back();
        if (columns > 0)
            line = cut(line, columns);
        line.erase(line.find_last_not_of(' ') + 1);
        out += bold(line, colour && &row == &rows.front()) + "\n";
    }
    return out;
}

} // namespace

std::string people(const Report &report, std::size_t columns, bool colour)
{
    std::string out = sections_text(report.sections(), colour);
    for (const Table &table : report.tables())
        out += table_text(table, columns, colour);
    return out + report.text();
}

} // namespace cmifctl
