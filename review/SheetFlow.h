#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "review/SheetLetters.h"
#include "review/SheetPages.h"

namespace tessaly {

// How a sheet looks on one paper; points.
struct SheetLook {
  double width, height;
  double margin;
  double size;       // of what stands in rows
  double titleSize;  // of the head of a page
  double gutter;     // between columns
  double notes;      // between two lines for notes
};
[[nodiscard]] const SheetLook& lookOf(Paper paper);

// A text in a row; it goes on in more lines where it is too wide.
struct SheetCell {
  std::string text;  // Windows-1252
  double x, width;   // from the left margin
  PdfFace face = PdfFace::kPlain;
  double gray = 0;
  bool right = false;  // ends at x + width
};
using SheetCells = std::vector<SheetCell>;

// Fills page after page from the top. A row is not parted over two pages unless it is longer than one; a
// heading stands on the page of what follows it, and again on each page that goes on with it.
class SheetFlow {
 public:
  SheetFlow(const SheetLook& look, const LetterWidths& widths,
            std::function<std::string(const std::string& heading)> continued);

  [[nodiscard]] double room() const { return look_.width - 2 * look_.margin; }  // between the margins
  [[nodiscard]] const SheetLook& look() const { return look_; }
  [[nodiscard]] const SheetLetters& letters() const { return letters_; }

  // A new page, with that at the head of it and of those that follow.
  void begin(const std::string& title, const std::string& place);
  // Empty: what follows has none.
  void heading(const std::string& text);
  // Lines of cells, one below the other, that belong together; a rule closes them when asked for.
  void rows(const std::vector<SheetCells>& cells, bool ruled = false);
  // A heading and empty lines to the end of the page, or of the next one where there is no room for some.
  void lines(const std::string& heading);

  [[nodiscard]] std::size_t pages() const { return pages_.size(); }
  [[nodiscard]] std::vector<SheetPage> take() { return std::move(pages_); }

 private:
  struct Lines;  // of one cell

  [[nodiscard]] double leading() const;
  [[nodiscard]] double bottom() const;
  [[nodiscard]] double headingHeight(std::size_t lines) const;
  [[nodiscard]] std::vector<std::string> headingLines() const;
  void newPage();
  void put(const std::string& text, double x, double y, double size, PdfFace face, double gray);
  void putHeading(const std::vector<std::string>& lines);
  void putRow(const std::vector<Lines>& row, std::size_t count);
  [[nodiscard]] bool fits(double height) const { return y_ + height <= bottom(); }

  const SheetLook& look_;
  const SheetLetters letters_;
  const std::function<std::string(const std::string&)> continued_;
  std::vector<SheetPage> pages_;
  std::string title_, place_, heading_;
  bool headingDue_ = false;
  double y_ = 0;       // the upper end of what comes next
  double firstY_ = 0;  // of the page
};

}  // namespace tessaly
