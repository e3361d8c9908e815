#include "review/SheetPages.h"

#include <algorithm>

#include "review/SheetFlow.h"

namespace tessaly {
namespace {

constexpr double kGray = 0.4, kLightGray = 0.75;
constexpr double kFootSize = 8;  // points
constexpr double kFootRule = 12, kThinRule = 0.4;
constexpr double kNamePart = 0.62;  // of the room, in the list of values
constexpr std::string_view kMark = "!";

std::string letters(const std::string& utf8) { return inSheetLetters(utf8); }

// The macros of a sheet, page after page.
class MacroPages {
 public:
  MacroPages(const SheetOptions& options, const SheetWords& words, const LetterWidths& widths)
      : options_(options),
        words_(words),
        flow_(lookOf(options.paper), widths, [&words](const std::string& heading) {
          // Of letters, not of UTF-8: neither is looked at.
          return filled(inSheetLetters(words.continued), heading);
        }) {}

  void add(const SheetMacro& macro) {
    flow_.begin(letters(headOf(macro, words_)), letters(macro.place));
    if (!macro.unread.empty()) line(letters(filled(words_.unread, macro.unread)));
    if (options_.findings && !macro.findings.empty()) {
      flow_.heading(letters(words_.findings));
      for (const Finding& finding : macro.findings) flow_.rows({marked(finding, 0)});
      flow_.heading({});
    }
    if (macro.unread.empty()) {
      addCommands(macro);
      if (options_.after && !macro.commands.empty()) addAfter(macro);
    }
    if (options_.notes) flow_.lines(letters(words_.notes));
  }

  [[nodiscard]] SheetFlow& flow() { return flow_; }

 private:
  void line(const std::string& text, double gray = 0) {
    flow_.rows({{{text, 0, flow_.room(), PdfFace::kPlain, gray}}});
  }

  SheetCells marked(const Finding& finding, double x) const {
    const double mark = flow_.look().gutter;
    return {{std::string(kMark), x, mark, PdfFace::kBold},
            {letters(words_.finding(finding)), x + mark, flow_.room() - x - mark, PdfFace::kPlain, kGray}};
  }

  void addCommands(const SheetMacro& macro) {
    if (macro.commands.empty()) line(letters(words_.empty), kGray);
    const std::string last = std::to_string(macro.commands.size());
    const SheetLook& look = flow_.look();
    const double number = std::max(2 * look.gutter, flow_.letters().width(last, PdfFace::kPlain, look.size));
    const double x = number + look.gutter;
    const std::string* destination = nullptr;
    for (std::size_t i = 0; i < macro.commands.size(); ++i) {
      const SheetCommand& command = macro.commands[i];
      if (destination == nullptr || *destination != command.destination)
        flow_.heading(letters(command.destination));
      destination = &command.destination;
      std::vector<SheetCells> cells{{{std::to_string(i + 1), 0, number, PdfFace::kPlain, kGray, true},
                                     {letters(command.line), x, flow_.room() - x}}};
      if (options_.findings)
        for (const Finding& finding : command.findings) cells.push_back(marked(finding, x));
      flow_.rows(cells);
    }
    flow_.heading({});
  }

  void addAfter(const SheetMacro& macro) {
    const std::string after = letters(words_.after);
    flow_.heading(after);
    if (macro.after.empty() && macro.untold.empty()) line(letters(words_.nothing), kGray);
    const double name = flow_.room() * kNamePart, x = name + flow_.look().gutter;
    for (const SheetGroup& group : macro.after) {
      flow_.heading(group.destination.empty() ? after : after + ": " + letters(group.destination));
      for (const SheetValue& value : group.values)
        flow_.rows({{{letters(value.name), 0, name}, {letters(value.shown), x, flow_.room() - x}}}, true);
    }
    if (!macro.untold.empty()) {
      if (!macro.after.empty()) flow_.heading({});
      line(letters(filled(words_.untold, countedFromOne(macro.untold))), kGray);
    }
    flow_.heading({});
  }

  const SheetOptions& options_;
  const SheetWords& words_;
  SheetFlow flow_;
};

// The table in front, as if it took so many pages itself; `first` are the places of the macros' first pages.
std::vector<SheetPage> tableOf(const Sheet& sheet, const SheetOptions& options, const SheetWords& words,
                               const LetterWidths& widths, const std::vector<std::size_t>& first,
                               std::size_t itself) {
  SheetFlow flow(lookOf(options.paper), widths, [&words](const std::string& heading) {
    return filled(inSheetLetters(words.continued), heading);
  });
  constexpr double kNumber = 44, kPage = 40;  // points; numbers of five digits fit in
  const double page = flow.room() - kPage, gutter = flow.look().gutter;
  flow.begin(letters(words.macros), letters(sheet.title));
  const auto row = [&](const std::string& number, const std::string& name, const std::string& pageText,
                       PdfFace face, double gray) {
    flow.rows({{{number, 0, kNumber, face, gray},
                {name, kNumber, page - kNumber - gutter, face, gray},
                {pageText, page, kPage, face, gray, true}}},
              true);
  };
  if (sheet.macros.empty())
    flow.rows({{{letters(words.none), 0, flow.room(), PdfFace::kPlain, kGray}}});
  else
    row(letters(words.number), letters(words.name), letters(words.pageColumn), PdfFace::kPlain, kGray);
  const std::string* place = nullptr;
  for (std::size_t i = 0; i < sheet.macros.size(); ++i) {
    const SheetMacro& macro = sheet.macros[i];
    if (macro.place != sheet.title && (place == nullptr || *place != macro.place))
      flow.heading(letters(macro.place));
    place = &macro.place;
    row(letters(macro.number), letters(macro.name), std::to_string(itself + first[i] + 1), PdfFace::kPlain,
        0);
  }
  return flow.take();
}

void addFeet(SheetPages& pages, const SheetOptions& options, const SheetWords& words,
             const SheetLetters& measure) {
  const SheetLook& look = lookOf(options.paper);
  const double y = look.height - look.margin;
  const std::string date = dateText(options.date), count = std::to_string(pages.pages.size());
  for (std::size_t i = 0; i < pages.pages.size(); ++i) {
    SheetPage& page = pages.pages[i];
    const auto put = [&](const std::string& text, bool right) {
      const double width = measure.width(text, PdfFace::kPlain, kFootSize);
      const double x = right ? look.width - look.margin - width : look.margin;
      page.texts.push_back({x, y, width, kFootSize, PdfFace::kPlain, kGray, text});
    };
    page.rules.push_back({look.margin, y - kFootRule, look.width - 2 * look.margin, kThinRule, kLightGray});
    put(date, false);
    put(letters(filled(words.page, std::to_string(i + 1), count)), true);
  }
}

}  // namespace

Expected<SheetPages> layOut(const Sheet& sheet, const SheetOptions& options, const SheetWords& words) {
  const LetterWidths* widths = letterWidths();
  if (widths == nullptr)
    return Failure{Failure::Kind::kMissing,
                   "the library for PDF (libhpdf) cannot be loaded; is it installed?"};
  MacroPages macros(options, words, *widths);
  std::vector<std::size_t> first;
  for (const SheetMacro& macro : sheet.macros) {
    first.push_back(macros.flow().pages());
    macros.add(macro);
  }
  SheetPages pages{lookOf(options.paper).width, lookOf(options.paper).height, letters(sheet.title), {}};
  if (sheet.ofMany || sheet.macros.empty()) {
    const std::size_t itself = tableOf(sheet, options, words, *widths, first, 0).size();
    pages.pages = tableOf(sheet, options, words, *widths, first, itself);
  }
  std::ranges::move(macros.flow().take(), std::back_inserter(pages.pages));
  addFeet(pages, options, words, SheetLetters(*widths));
  return pages;
}

}  // namespace tessaly
