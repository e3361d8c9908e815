#include <clocale>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

#include "platform/Text.h"

namespace tessaly {
namespace {

TEST(Text, NumbersReadAsTheCLibraryReadsThem) {
  const struct {
    const char* text;
    std::int32_t integer;
    double real;
  } cases[] = {{"", 0, 0},
               {" \t\r\n-12x", -12, -12},
               {"+7", 7, 7},
               {"+-7", 0, 0},
               {"- 7", 0, 0},
               {"abc", 0, 0},
               {"0x1F", 0, 31},
               {"1.5e2", 1, 150},
               {".5", 0, 0.5},
               {"1,5", 1, 1},
               {"1e", 1, 1},
               {"+.25abc", 0, 0.25},
               {"1e999", 1, HUGE_VAL},
               {"-inf", 0, -HUGE_VAL},
               {"99999999999", std::numeric_limits<std::int32_t>::max(), 99999999999.0},
               {"-2147483649", std::numeric_limits<std::int32_t>::min(), -2147483649.0},
               {"99999999999999999999", std::numeric_limits<std::int32_t>::max(), 1e20},
               {"-99999999999999999999", std::numeric_limits<std::int32_t>::min(), -1e20}};
  for (const auto& c : cases) {
    EXPECT_EQ(parseInt(c.text), c.integer) << c.text;
    EXPECT_EQ(parseDouble(c.text), c.real) << c.text;
  }
  EXPECT_EQ(parseDouble(std::string_view("12345").substr(1, 2)), 23);  // the view's end counts
  EXPECT_TRUE(wholeNumber("-3", -3, 5) && wholeNumber("5", -3, 5));
  EXPECT_FALSE(wholeNumber("-4", -3, 5) || wholeNumber("6", -3, 5) || wholeNumber("5x", -3, 5));
}

TEST(Text, TheDecimalPointIsIndependentOfTheLocale) {
  const bool comma = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;  // where the machine has it
  EXPECT_EQ(format("%.2f %s", 1.25, "x"), "1.25 x") << comma;
  EXPECT_EQ(parseDouble("0.5"), 0.5) << comma;
  std::setlocale(LC_NUMERIC, "C");
}

TEST(Text, LongTextsAreFormattedWhole) {
  for (const int length : {0, 255, 256, 5000}) {
    EXPECT_EQ(format("%*s|", length, ""), std::string(static_cast<std::size_t>(length), ' ') + "|");
  }
}

TEST(Text, Replacing) {
  EXPECT_EQ(replaceAll("aXXbXX", "XX", "XXX"), "aXXXbXXX");  // what was put in is not searched again
  EXPECT_EQ(replaceAll("abc", "", "-"), "abc");
  EXPECT_TRUE(endsWithNoCase("A.MaC", ".mac") && endsWithNoCase(".MAC", ".mac"));
  EXPECT_EQ(toUpperAscii("`azAZ{"), "`AZAZ{");
  EXPECT_FALSE(endsWithNoCase("mac", ".mac"));
  EXPECT_FALSE(equalNoCase("key", "keys"));
}

TEST(Text, CodePages) {
  const struct {
    const char* bytes;
    bool utf8;
    const char* shown;
    const char* codePage;
  } cases[] = {{"plain", true, "plain", "plain"},
               {"\xFC", false, "\xC3\xBC", "\xFC"},
               {"\xC3\xBC", true, "\xC3\xBC", "\xFC"},
               {"\x80\x81", false, "\xE2\x82\xAC\xC2\x81", "\x80\x81"},
               {"\xC2\x80", true, "\xC2\x80", "?"},
               {"\xE2\x82\xAC", true, "\xE2\x82\xAC", "\x80"},
               {"\xF0\x9F\x98\x80!", true, "\xF0\x9F\x98\x80!", "?!"},
               {"\xC0\xAF", false, "\xC3\x80\xC2\xAF", "\xC0\xAF"},                      // overlong
               {"\xED\xA0\x80", false, "\xC3\xAD\xC2\xA0\xE2\x82\xAC", "\xED\xA0\x80"},  // surrogate
               {"\xF4\x90\x80\x80", false, "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC", "\xF4\x90\x80\x80"},
               {"\xE2\x82", false, "\xC3\xA2\xE2\x80\x9A", "\xE2\x82"},
               {"\x80", false, "€", "\x80"},
               {"\xC3(", false, "Ã(", "\xC3("},
               {"\xC3\xBF", true, "ÿ", "\xFF"},
               {"\xE0\xA0\x80", true, "\u0800", "?"},
               {"\xE0\x9F\xBF", false, "àŸ¿", "\xE0\x9F\xBF"},
               {"\xED\xBF\xBF", false, "í¿¿", "\xED\xBF\xBF"},
               {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true, "\U00010000\U0010FFFF", "??"},
               {"\xF0\x8F\xBF\xBF", false, "ð\u008f¿¿", "\xF0\x8F\xBF\xBF"},
               {"\xF5\x80\x80\x80", false, "õ€€€", "\xF5\x80\x80\x80"}};
  for (const auto& c : cases) {
    EXPECT_EQ(isValidUtf8(c.bytes), c.utf8) << c.bytes;
    EXPECT_EQ(displayUtf8(c.bytes), c.shown) << c.bytes;
    EXPECT_EQ(utf8ToWindows1252(displayUtf8(c.bytes)), c.codePage) << c.bytes;
    const bool held = std::strchr(c.codePage, '?') == nullptr;
    EXPECT_EQ(exactWindows1252(displayUtf8(c.bytes)),
              held ? std::optional<std::string>(c.codePage) : std::nullopt);
    EXPECT_EQ(isAscii(c.bytes), c.shown == std::string("plain"));
  }
  std::string ends;
  for (const char32_t c : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) appendUtf8(ends, c);
  EXPECT_EQ(ends, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(utf8ToWindows1252("a\xFF"), "a?");
  EXPECT_EQ(beginningOf("K\xC3\xBC", 2) + beginningOf("\x80\x80", 1), "K");
}

TEST(Text, WhatIsNotSeenStandsAsItsNumber) {
  const struct {
    std::string_view bytes, shown;
  } cases[] = {{"K\xC3\xBC"
                "che ~",
                "K\xC3\xBC"
                "che ~"},
               {std::string_view("a\0b\x1B\n", 5), "a[U+0000]b[U+001B]\n"},
               {"\x7F\x81", "[U+007F][U+0081]"},  // Windows-1252
               {"\xE2\x80\xAE"
                "cam\xE2\x80\x8F",
                "[U+202E]cam[U+200F]"},
               {"\xD7\x90\xE2\x80\x8D", "\xD7\x90\xE2\x80\x8D"},  // letters from right to left, and joined
               {"\xEF\xBB\xBF\xE2\x81\xA6\xE2\x80\xA8", "[U+FEFF][U+2066][U+2028]"}};
  for (const auto& c : cases) EXPECT_EQ(visibleUtf8(c.bytes, "\n"), c.shown);
}

}  // namespace
}  // namespace tessaly
