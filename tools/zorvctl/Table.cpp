#include "Table.hpp"

#include <algorithm>

namespace ZorvCtl {

namespace {

void widen(std::vector<std::size_t>& widths, const Table::RowT& row)
{
    widths.resize(std::max(widths.size(), row.size()), 0);
    for (std::size_t column = 0; column < row.size(); ++column) {
        widths[column] = std::max(widths[column], widthOf(row[column].text));
    }
}

/// Without blanks at the end.
std::string lineOf(const Console& console, const Table::RowT& row, const std::vector<std::size_t>& widths)
{
    std::string line;
    std::size_t blanks = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        if (!row[column].text.empty()) {
            line += std::string(blanks, ' ') + console.coloured(row[column].text, row[column].colour);
            blanks = 0;
        }
        blanks += widths[column] - widthOf(row[column].text) + 2;
    }
    return line;
}

}  // namespace

std::size_t widthOf(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

Table::Table(RowT itsHeading) : heading(std::move(itsHeading))
{
    for (Cell& cell : heading) {
        cell.colour = Colour::bold;
    }
}

void Table::print(const Console& console, const std::string& indentation) const
{
    std::vector<std::size_t> widths;
    widen(widths, heading);
    for (const RowT& row : rows) {
        widen(widths, row);
    }
    if (!heading.empty()) {
        console.out << indentation << lineOf(console, heading, widths) << '\n';
    }
    for (const RowT& row : rows) {
        console.out << indentation << lineOf(console, row, widths) << '\n';
    }
}

}  // namespace ZorvCtl
