#include "review/SheetFlow.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tessaly {
namespace {

constexpr double kLeading = 1.32;  // of the size, from line to line
constexpr double kBase = 1.0;      // of the size, from the upper end of a line to its base line
constexpr double kFoot = 18;       // what a page's foot takes
constexpr double kAfterHead = 10;  // between the rule of the head and the first row
constexpr double kBeforeHeading = 8, kAfterHeading = 3;
constexpr double kAfterRow = 2.5;
constexpr double kGray = 0.4, kLightGray = 0.75;
constexpr double kHeadRule = 0.8, kThinRule = 0.4;
constexpr double kPlaceSize = 0.9;  // of the size of rows
constexpr std::size_t kTitleLines = 2;
constexpr int kFewestNotes = 4;

constexpr SheetLook kA4{595.28, 841.89, 45, 9.5, 14, 8, 21};
constexpr SheetLook kA5{419.53, 595.28, 34, 8.5, 12, 7, 18};
constexpr SheetLook kLetter{612, 792, 45, 9.5, 14, 8, 21};

}  // namespace

struct SheetFlow::Lines {
  const SheetCell& cell;
  std::vector<std::string> texts;
};

const SheetLook& lookOf(Paper paper) {
  switch (paper) {
    case Paper::kA4:
      return kA4;
    case Paper::kA5:
      return kA5;
    case Paper::kLetter:
      return kLetter;
  }
  return kA4;
}

SheetFlow::SheetFlow(const SheetLook& look, const LetterWidths& widths,
                     std::function<std::string(const std::string& heading)> continued)
    : look_(look), letters_(widths), continued_(std::move(continued)) {}

double SheetFlow::leading() const { return look_.size * kLeading; }
double SheetFlow::bottom() const { return look_.height - look_.margin - kFoot; }
double SheetFlow::headingHeight(std::size_t lines) const {
  return kBeforeHeading + static_cast<double>(lines) * leading() + kAfterHeading;
}

void SheetFlow::put(const std::string& text, double x, double y, double size, PdfFace face, double gray) {
  if (!text.empty())
    pages_.back().texts.push_back(
        {look_.margin + x, y, letters_.width(text, face, size), size, face, gray, text});
}

void SheetFlow::begin(const std::string& title, const std::string& place) {
  title_ = title;
  place_ = place;
  heading_.clear();
  headingDue_ = false;
  newPage();
  pages_.back().bookmark = title_;
  // What the head has no room for stands here, once.
  const double placeSize = look_.size * kPlaceSize;
  const bool longTitle = letters_.lines(title_, PdfFace::kBold, look_.titleSize, room()).size() > kTitleLines;
  const bool longPlace = letters_.width(place_, PdfFace::kPlain, placeSize) > room();
  if (longTitle) rows({{{title_, 0, room(), PdfFace::kBold}}});
  if (longPlace) rows({{{place_, 0, room(), PdfFace::kPlain, kGray}}});
}

void SheetFlow::newPage() {
  pages_.emplace_back();
  y_ = look_.margin;
  const double titleLeading = look_.titleSize * kLeading, placeSize = look_.size * kPlaceSize;
  auto lines = letters_.lines(title_, PdfFace::kBold, look_.titleSize, room());
  if (lines.size() > kTitleLines) {
    // The last line that there is room for takes what follows, too, so that it is elided.
    const std::string rest = std::accumulate(
        lines.begin() + kTitleLines, lines.end(), lines[kTitleLines - 1],
        [](const std::string& before, const std::string& line) { return before + ' ' + line; });
    lines.resize(kTitleLines);
    lines.back() = letters_.elided(rest, PdfFace::kBold, look_.titleSize, room());
  }
  for (const std::string& line : lines) {
    put(line, 0, y_ + look_.titleSize * kBase, look_.titleSize, PdfFace::kBold, 0);
    y_ += titleLeading;
  }
  if (!place_.empty()) {
    const std::string place = letters_.elided(place_, PdfFace::kPlain, placeSize, room());
    put(place, 0, y_ + placeSize * kBase, placeSize, PdfFace::kPlain, kGray);
    y_ += leading();
  }
  y_ += kAfterRow;
  pages_.back().rules.push_back({look_.margin, y_, room(), kHeadRule, 0});
  y_ += kAfterHead;
  firstY_ = y_;
  if (!heading_.empty() && !headingDue_)
    putHeading({letters_.elided(continued_(heading_), PdfFace::kBold, look_.size, room())});
}

void SheetFlow::heading(const std::string& text) {
  heading_ = text;
  headingDue_ = !text.empty();
}

void SheetFlow::putHeading(const std::vector<std::string>& lines) {
  if (y_ > firstY_) y_ += kBeforeHeading;
  for (const std::string& line : lines) {
    if (!fits(leading())) newPage();
    put(line, 0, y_ + look_.size * kBase, look_.size, PdfFace::kBold, 0);
    y_ += leading();
  }
  y_ += kAfterHeading;
  headingDue_ = false;  // now only: the pages that it has begun itself do not go on with it
}

std::vector<std::string> SheetFlow::headingLines() const {
  return letters_.lines(heading_, PdfFace::kBold, look_.size, room());
}

void SheetFlow::putRow(const std::vector<Lines>& row, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (!fits(leading())) newPage();
    for (const Lines& lines : row) {
      if (i >= lines.texts.size()) continue;
      const SheetCell& cell = lines.cell;
      const double width = letters_.width(lines.texts[i], cell.face, look_.size);
      const double x = cell.right ? cell.x + cell.width - width : cell.x;
      put(lines.texts[i], x, y_ + look_.size * kBase, look_.size, cell.face, cell.gray);
    }
    y_ += leading();
  }
}

void SheetFlow::rows(const std::vector<SheetCells>& cells, bool ruled) {
  std::vector<std::pair<std::vector<Lines>, std::size_t>> all;
  std::size_t count = 0;
  for (const SheetCells& row : cells) {
    std::vector<Lines> lines;
    std::size_t most = 0;
    for (const SheetCell& cell : row) {
      lines.push_back({cell, letters_.lines(cell.text, cell.face, look_.size, cell.width)});
      most = std::max(most, lines.back().texts.size());
    }
    count += most;
    all.emplace_back(std::move(lines), most);
  }
  const double height = static_cast<double>(count) * leading();
  const auto heading = headingDue_ ? headingLines() : std::vector<std::string>();
  const double above = headingHeight(std::max<std::size_t>(heading.size(), 1));
  const bool parted = height > bottom() - firstY_ - above;
  const double needed = (parted ? leading() : height) + (headingDue_ ? above : 0);
  if (!fits(needed) && y_ > firstY_) newPage();
  if (headingDue_) putHeading(heading);
  for (const auto& [lines, most] : all) putRow(lines, most);
  y_ += kAfterRow;
  if (ruled) pages_.back().rules.push_back({look_.margin, y_ - kAfterRow / 2, room(), kThinRule, kLightGray});
}

void SheetFlow::lines(const std::string& heading) {
  this->heading(heading);
  if (!fits(headingHeight(1) + kFewestNotes * look_.notes)) newPage();
  putHeading(headingLines());
  for (; fits(look_.notes); y_ += look_.notes)
    pages_.back().rules.push_back({look_.margin, y_ + look_.notes, room(), kThinRule, kGray});
  heading_.clear();
}

}  // namespace tessaly
