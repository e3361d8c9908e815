// A sheet as PDF, read by another program.
#include <array>
#include <cstdio>
#include <gmock/gmock.h>

#include "review/SheetFiles.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr std::chrono::year_month_day kPrinted{2026y, std::chrono::November, 25d};

std::string textOfPdf(const std::string& bytes, const TestSite& site) {
  site.write("c:\\sheet.pdf", bytes);
  const std::string command = "pdftotext -layout '" + site.root.resolve("c:\\sheet.pdf").string() + "' -";
  FILE* pipe = popen(command.c_str(), "r");
  std::string text;
  for (std::array<char, 4096> block; const std::size_t size = fread(block.data(), 1, block.size(), pipe);)
    text.append(block.data(), size);
  return pclose(pipe) == 0 ? text : "pdftotext failed";
}

TEST(Sheet, PdfIsTheSameBytesAndHoldsEveryLetter) {
  TestSite site;
  Sheet sheet{"Große “Show”", false, {{"c:\\m\\macroWP1", "007", "“ß” – €", {}}}};
  sheet.macros[0].commands.push_back({"Mainframe1", "Pegel Ж – 50%2"});
  const auto write = [&](std::chrono::year_month_day date) {
    return *writeSheet(sheet, {.date = date}, {}, SheetFormat::kPdf);
  };
  const std::string bytes = write(kPrinted);
  EXPECT_EQ(write(kPrinted), bytes);
  EXPECT_NE(write({2026y, std::chrono::November, 26d}), bytes);
  EXPECT_THAT(bytes, AllOf(HasSubstr("/CreationDate (D:20261125000000Z"), Not(HasSubstr("/ID"))));
  EXPECT_THAT(textOfPdf(bytes, site), AllOf(HasSubstr("007 - “ß” – €\n"), HasSubstr("Pegel [U+0416] – 50%2"),
                                            HasSubstr("page 1 of 1"), HasSubstr("Notes")));
  EXPECT_THAT(textOfPdf(*writeSheet({"Empty", true, {}}, {.date = kPrinted}, {}, SheetFormat::kPdf), site),
              HasSubstr("no macros"));
}

}  // namespace
}  // namespace tessaly
