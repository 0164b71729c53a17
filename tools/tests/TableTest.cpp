#include "Table.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace ZorvCtl {

class TableTest : public ::testing::Test {
protected:
    std::string printed(const Table& table)
    {
        table.print(console, " ");
        return out.str();
    }

    std::ostringstream out;
    Console console{out, out};
};

TEST_F(TableTest, columnsAreAsWideAsTheirWidestTextInCodePoints)
{
    Table table({"A", "B"});
    table.add({"größer", "x"});
    table.add({"日本", "y"});

    EXPECT_EQ(" A       B\n größer  x\n 日本      y\n", printed(table));
}

TEST_F(TableTest, noLineEndsInBlanks)
{
    Table table({"A", "LONG"});
    table.add({"x", ""});
    table.add({"", "y"});

    EXPECT_EQ(" A  LONG\n x\n    y\n", printed(table));
}

TEST_F(TableTest, coloursTakeNoWidth)
{
    console.hasColours = true;
    Table table({});
    table.add({{"x", Colour::red}, "y"});
    table.add({"long", "z"});

    EXPECT_EQ(" \033[31mx\033[0m     y\n long  z\n", printed(table));
}

}  // namespace ZorvCtl
