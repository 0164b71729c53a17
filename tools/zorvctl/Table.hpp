/// Rows under a heading, in columns as wide as their widest text; and pairs of name and value.
///
/// Texts are expected as part of one line; widths count code points.
#pragma once

#include <string>
#include <vector>

#include "Console.hpp"

namespace ZorvCtl {

struct Cell {
    // Made of a text without further words. NOLINTNEXTLINE(google-explicit-constructor)
    Cell(std::string itsText, Colour itsColour = Colour::none) : text(std::move(itsText)), colour(itsColour) {}
    Cell(const char* itsText) : text(itsText) {}  // NOLINT(google-explicit-constructor)

    std::string text;
    Colour colour = Colour::none;
};

class Table {
public:
    using RowT = std::vector<Cell>;

    /// @param heading empty for none.
    explicit Table(RowT heading);

    void add(RowT row) { rows.push_back(std::move(row)); }
    std::size_t size() const { return rows.size(); }

    /// @param indentation before each row.
    void print(const Console& console, const std::string& indentation = "") const;

private:
    RowT heading;
    std::vector<RowT> rows;
};

/// Code points of a UTF-8 text.
std::size_t widthOf(const std::string& text);

}  // namespace ZorvCtl
