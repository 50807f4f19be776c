#include "text_table.h"

#include "terminal_text.h"
#include "text_value.h"

#include <algorithm>
#include <numeric>

namespace cmifctl
{
namespace
{

const Json &cell(const Table &table, std::size_t row, const std::string &key)
{
    const bool replaced = row < table.shown.size() && table.shown[row].contains(key);
    return replaced ? table.shown[row][key] : table.rows[row].at(key);
}

// On a narrow terminal the last column keeps a few characters; the widest others shrink.
void make_room_for_last(std::vector<std::size_t> &widths, std::size_t columns)
{
    constexpr std::size_t min_width = 8;
    constexpr std::size_t gap = 2;
    const auto others_end = widths.end() - 1;
    const std::size_t needed = std::min(widths.back(), min_width);
    for (;;) {
        const std::size_t taken =
            std::accumulate(widths.begin(), others_end, gap * (widths.size() - 1));
        const auto widest = std::max_element(widths.begin(), others_end);
        if (taken + needed <= columns || widest == others_end || *widest <= min_width)
            return;
        --*widest;
    }
}

using Cells = std::vector<std::vector<std::string>>;

// The titles, then the rows.
Cells cells_of(const Table &table)
{
    Cells cells(1);
    for (const Column &column : table.columns)
        cells.front().push_back(column.title);
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        cells.emplace_back();
        for (const Column &column : table.columns)
            cells.back().push_back(escape_controls(value_text(cell(table, i, column.key))));
    }
    return cells;
}

std::vector<std::size_t> widths_of(const Cells &cells)
{
    std::vector<std::size_t> widths(cells.front().size(), 0);
    for (const auto &row : cells)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], width(row[i]));
    return widths;
}

std::string row_text(const std::vector<std::string> &row, const std::vector<std::size_t> &widths,
                     std::size_t columns)
{
    std::string line;
    for (std::size_t i = 0; i + 1 < row.size(); ++i)
        line += padded(truncated(row[i], widths[i]), widths[i]) + "  ";
    line += row.back();
    if (columns > 0)
        line = truncated(line, columns);
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

std::string render_table(const Table &table, std::size_t columns, bool colour)
{
    const Cells cells = cells_of(table);
    std::vector<std::size_t> widths = widths_of(cells);
    if (columns > 0)
        make_room_for_last(widths, columns);
    std::string out;
    for (const auto &row : cells)
        out += bold(row_text(row, widths, columns), colour && &row == &cells.front()) + "\n";
    return out;
}

} // namespace cmifctl
