// A document, read by another program.
#include <array>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>

#include "TemporarySite.h"
#include "platform/PdfFile.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

TEST_F(TemporarySite, APdfHasItsTextsAndLinesWhereTheyWerePut) {
  PdfFile file("T\xFC", {2026y, std::chrono::November, 25d});
  file.addBookmark("on no page");
  file.text(1, 2, PdfFace::kPlain, 3, 0, "on no page");
  file.line(1, 2, 3, 4, 0);
  file.addPage(200, 100);
  file.addBookmark("Gr\xFCn");
  file.text(10, 20, PdfFace::kBold, 12, 0.5, "A");
  file.text(30, 40, PdfFace::kPlain, 8, 0, "B");
  file.line(5, 60, 100, 2, 0.25);
  file.addPage(300, 150);
  file.addBookmark("2");
  const std::string bytes = *file.end();
  for (const char* part : {"/Title <FEFF005400FC>", "/Creator <FEFF0054", "(D:20261125000000Z", "/Filter",
                           "/Title <FEFF0047007200FC006E>", "/Title <FEFF0032>", "/Dest", "/Count 2",
                           "/MediaBox [ 0 0 300 150 ]", "/BaseFont /Helvetica-Bold", "/WinAnsiEncoding"})
    EXPECT_THAT(bytes, HasSubstr(part));
  put("file.pdf", bytes);
  FILE* pipe = popen(("pdftocairo -svg -l 1 '" + host("file.pdf").string() + "' -").c_str(), "r");
  std::string drawn;
  for (std::array<char, 4096> block; const std::size_t size = fread(block.data(), 1, block.size(), pipe);)
    drawn.append(block.data(), size);
  EXPECT_EQ(pclose(pipe), 0);
  for (const char* part : {"viewBox=\"0 0 200 100\"", "fill:rgb(50%,50%,50%)", "glyph0-1\" x=\"10\" y=\"20\"",
                           "M 6.015625 -1.765625 L", "fill:rgb(0%,0%,0%)", "glyph1-1\" x=\"30\" y=\"40\"",
                           "M 0.625 0 L", "stroke-width:2;", "stroke:rgb(25%,25%,25%)",
                           "M 5 40 L 105 40 \" transform=\"matrix(1,0,0,-1,0,100)"})
    EXPECT_THAT(drawn, HasSubstr(part));
  EXPECT_EQ((*letterWidths())[0]['A'], 667);
  EXPECT_EQ((*letterWidths())[1][0xFF], 556);
}

}  // namespace
}  // namespace tessaly
