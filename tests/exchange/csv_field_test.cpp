// Single cells of comma-separated text.
#include "exchange/csv_field.h"

#include <gtest/gtest.h>

#include <sstream>

namespace fenmark::exchange {
namespace {

std::string cell(std::string_view text) {
    std::ostringstream out;
    out << CsvField{text};
    return out.str();
}

TEST(CsvField, IsQuotedWhereItMustBe) {
    EXPECT_EQ(cell(""), "");
    EXPECT_EQ(cell("a b"), "a b");
    EXPECT_EQ(cell("a,b"), "\"a,b\"");
    EXPECT_EQ(cell("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(cell("a\r\nb"), "\"a\r\nb\"");
    EXPECT_EQ(cell(" a"), "\" a\"");
    EXPECT_EQ(cell("a "), "\"a \"");
}

TEST(CsvField, HasNoControlCharacters) {
    EXPECT_EQ(cell("a\x1B[31mb"), "a\uFFFD[31mb");
    EXPECT_EQ(cell(std::string_view("a\0,\x7F", 4)), "\"a\uFFFD,\uFFFD\"");
    EXPECT_EQ(cell("a\tb"), "a\tb");
}

TEST(CsvField, IsNoFormulaForASpreadsheet) {
    for (const char* formula :
         {"=1+1", "+A1", "-A1", "@SUM(A1)", "\t=1", "  =1", "\u3000=1", "\uFF1D1", "-", "-1e999"}) {
        EXPECT_TRUE(cell(formula).starts_with("\"'")) << formula;
    }
    for (const char* number : {"-12.5", "+3", "-1e3", "1=2", "a-b"}) {
        EXPECT_EQ(cell(number), number);
    }
}

} // namespace
} // namespace fenmark::exchange
