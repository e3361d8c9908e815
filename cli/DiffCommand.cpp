#include <algorithm>
#include <optional>
#include <string>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "model/MacroFile.h"
#include "platform/Text.h"
#include "review/MacroDiff.h"

namespace tessaly {
namespace {

using Kind = DiffRow::Kind;
using What = CommandChange::What;
using Json = nlohmann::ordered_json;

constexpr std::size_t kContext = 3;  // rows alike that are printed beside those that differ
constexpr LineOptions kOptions{.showDestination = true};

std::string_view kindName(Kind kind) {
  switch (kind) {
    case Kind::kSame:
      return "same";
    case Kind::kSameMeaning:
      return "same-meaning";
    case Kind::kChanged:
      return "changed";
    case Kind::kOnlyA:
      return "only-a";
    case Kind::kOnlyB:
      return "only-b";
    case Kind::kMovedFrom:
      return "moved-from";
    case Kind::kMovedTo:
      return "moved-to";
  }
  return {};
}

std::string_view whatName(What what) {
  switch (what) {
    case What::kDestination:
      return "destination";
    case What::kFunction:
      return "function";
    case What::kWorkplace:
      return "workplace";
    case What::kGroup:
      return "group";
    case What::kModule:
      return "module";
    case What::kWidget:
      return "widget";
    case What::kParameter:
      return "parameter";
    case What::kOrder:
      return "order";
    case What::kUnread:
      return "unread";
  }
  return {};
}

std::optional<Macro> load(CommandSession& session, const std::string& word) {
  std::optional<Macro> macro;
  static_cast<void>(session.readFrom(word, [&](const FileOperand& file) {
    auto loaded = loadMacro(session.site(), file.path());
    if (!loaded) return session.failed(file.shown() + ' ' + loaded.failure().text);
    macro = *std::move(loaded);
    return kExitDone;
  }));
  return macro;
}

bool hasDescribed(const Macro& macro) {
  return std::any_of(macro.commands().begin(), macro.commands().end(),
                     [](const MacroCommand& command) { return !command.classic(); });
}

// A comparison on its way out.
class Report {
 public:
  Report(CommandSession& session, const MacroDiff& diff, const FunctionDictionary& dictionary)
      : session_(session), diff_(diff), context_{dictionary, session.decodingLists()} {}

  void printLines() const {
    const auto& rows = diff_.rows();
    std::size_t next = 0;
    for (const DiffRange& range : diff_.differences()) {
      const std::size_t before = range.begin - std::min(range.begin, kContext);
      if (before > next && next > 0) session_.line("...");
      for (std::size_t i = std::max(next, before); i < range.end; ++i) printRow(rows[i]);
      next = range.end;
      const auto following = std::find_if(rows.begin() + static_cast<std::ptrdiff_t>(next), rows.end(),
                                          [](const DiffRow& row) { return row.differs(); });
      const std::size_t end =
          std::min({next + kContext, rows.size(), static_cast<std::size_t>(following - rows.begin())});
      for (; next < end; ++next) printRow(rows[next]);
    }
    printNotes();
  }

  void printJson() const {
    const auto name = [](const Macro& macro) {
      return macro.name() ? Json(displayUtf8(*macro.name())) : Json();
    };
    const DiffCounts& counts = diff_.counts();
    Json report{{"same", diff_.identical()},
                {"nameA", name(diff_.a())},
                {"nameB", name(diff_.b())},
                {"surroundingsDiffer", diff_.surroundingsDiffer()},
                {"onlyLayoutDiffers", diff_.onlyLayoutDiffers()},
                {"minimal", diff_.minimal()},
                {"counts",
                 {{"same", counts.same},
                  {"sameMeaning", counts.sameMeaning},
                  {"changed", counts.changed},
                  {"onlyA", counts.onlyA},
                  {"onlyB", counts.onlyB},
                  {"moved", counts.moved}}},
                {"rows", Json::array()}};
    for (const DiffRow& row : diff_.rows()) {
      if (row.differs()) report["rows"].push_back(rowJson(row));
    }
    tessaly::printJson(session_, report);
  }

 private:
  [[nodiscard]] std::string lineOf(Side side, int number) const {
    return commandLine(diff_.of(side).commands()[static_cast<std::size_t>(number)], kOptions, context_);
  }

  void printLine(std::string_view mark, const DiffRow& row, Side side) const {
    const auto number = [](int command) { return command < 0 ? std::string() : std::to_string(command); };
    session_.line(std::string(mark) + '\t' + number(row.a) + '\t' + number(row.b) + '\t' +
                  lineOf(side, side == Side::kA ? row.a : row.b));
  }

  void printRow(const DiffRow& row) const {
    switch (row.kind) {
      case Kind::kSame:
        return printLine("=", row, Side::kA);
      case Kind::kSameMeaning:
        printLine("~", row, Side::kA);
        break;
      case Kind::kChanged:
        printLine("!-", row, Side::kA);
        printLine("!+", row, Side::kB);
        break;
      case Kind::kOnlyA:
        return printLine("-", row, Side::kA);
      case Kind::kOnlyB:
        return printLine("+", row, Side::kB);
      case Kind::kMovedFrom:
        return printLine("m-", row, Side::kA);
      case Kind::kMovedTo:
        printLine("m+", row, Side::kB);
        break;
    }
    for (const CommandChange& change : diff_.changes(row)) printChange(change);
  }

  void printChange(const CommandChange& change) const {
    const auto value = [](const std::optional<std::string>& text) {
      return text ? '"' + outputName(*text) + '"' : std::string("none");
    };
    std::string line = "?\t\t\t" + std::string(whatName(change.what));
    if (change.what == What::kParameter) line += ' ' + outputName(change.name);
    if (change.what != What::kOrder) line += ": " + value(change.a) + " | " + value(change.b);
    session_.line(change.sameInUnit ? line + " (the same value)" : line);
  }

  void printNotes() const {
    const DiffCounts& counts = diff_.counts();
    const auto name = [](const Macro& macro) {
      return macro.name() ? '"' + outputName(*macro.name()) + '"' : std::string("none");
    };
    if (diff_.nameDiffers()) session_.line("#\tname: " + name(diff_.a()) + " | " + name(diff_.b()));
    if (diff_.surroundingsDiffer())
      session_.line("#\tcomments, attributes or something else beside the commands differ");
    if (diff_.onlyLayoutDiffers())
      session_.line("#\tonly the layout differs: white space, quotes, references or the encoding");
    session_.line(
        "#\tsame: " + std::to_string(counts.same) + ", same meaning: " + std::to_string(counts.sameMeaning) +
        ", changed: " + std::to_string(counts.changed) + ", only A: " + std::to_string(counts.onlyA) +
        ", only B: " + std::to_string(counts.onlyB) + ", moved: " + std::to_string(counts.moved));
  }

  [[nodiscard]] Json rowJson(const DiffRow& row) const {
    const auto number = [](int value) { return value < 0 ? Json() : Json(value); };
    const auto text = [](const std::optional<std::string>& value) {
      return value ? Json(displayUtf8(*value)) : Json();
    };
    Json json{{"kind", kindName(row.kind)},
              {"a", number(row.a)},
              {"b", number(row.b)},
              {"lineA", row.a < 0 ? Json() : Json(displayUtf8(lineOf(Side::kA, row.a)))},
              {"lineB", row.b < 0 ? Json() : Json(displayUtf8(lineOf(Side::kB, row.b)))},
              {"block", number(row.block)},
              {"changes", Json::array()}};
    for (const CommandChange& change : diff_.changes(row)) {
      json["changes"].push_back({{"what", whatName(change.what)},
                                 {"name", displayUtf8(change.name)},
                                 {"a", text(change.a)},
                                 {"b", text(change.b)},
                                 {"sameInUnit", change.sameInUnit}});
    }
    return json;
  }

  CommandSession& session_;
  const MacroDiff& diff_;
  LineContext context_;
};

}  // namespace

int runDiff(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  if (arguments[0] == "-" && arguments[1] == "-")
    return session.wrongUsage("only one of the two can come from standard input");
  auto a = load(session, arguments[0]);
  auto b = a ? load(session, arguments[1]) : std::nullopt;
  if (!a || !b) return kExitTrouble;
  const FunctionDictionary none;
  const FunctionDictionary& dictionary = hasDescribed(*a) || hasDescribed(*b) ? session.dictionary() : none;
  const MacroDiff diff(*std::move(a), *std::move(b), &dictionary);
  const Report report(session, diff, dictionary);
  if (json) {
    report.printJson();
  } else if (!diff.identical()) {
    report.printLines();
  }
  return diff.identical() ? kExitDone : kExitDifferent;
}

}  // namespace tessaly
