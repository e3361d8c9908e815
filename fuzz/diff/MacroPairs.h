#pragma once

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "platform/Text.h"
#include "review/Alignment.h"
#include "review/MacroDiff.h"

// Random pairs of macros, and what a comparison says of them set against a plain one of quadratic cost. Each
// check gives what is wrong, or nothing.
namespace tessaly {

// F, I, T, E have a parameter "p" of their kind.
inline const FunctionDictionary& pairDictionary() {
  static const auto* const made = [] {
    auto* const dictionary = new FunctionDictionary;
    const auto add = [&](const char* name, auto FunctionTemplate::*kind) {
      FunctionTemplate definition;
      definition.name = name;
      (definition.*kind).emplace_back().name = "p";
      dictionary->add(std::move(definition));
    };
    add("F", &FunctionTemplate::floats);
    add("I", &FunctionTemplate::integers);
    add("T", &FunctionTemplate::timecodes);
    add("E", &FunctionTemplate::enums);
    dictionary->finish();
    return dictionary;
  }();
  return *made;
}

class MacroPairs {
 public:
  explicit MacroPairs(unsigned seed) : random_(seed) {}

  // One pair, by turns alike, alike but for the bytes, and unlike.
  std::string check() {
    std::vector<std::string> commands(below(14));
    for (std::string& command : commands) command = anyCommand();
    const std::string before = document(commands, plain_);
    const int kind = below(8);
    Look look = plain_;
    if (kind == 0) look = anyLayout();
    if (kind > 0) change(commands, kind == 1 ? 12 : 1 + below(3));
    if (kind > 3) look = any(), look.layout = anyLayout().layout;
    std::string after = document(commands, look);
    if (kind == 7)
      after[static_cast<std::size_t>(below(static_cast<int>(after.size())))] = "<>\"= x&\n"[below(8)];
    const auto a = Macro::read(before), b = Macro::read(after);
    if (!a || !b) return {};  // a byte too many
    const std::string wrong = checkPair(*a, *b, kind == 0);
    return wrong.empty() ? wrong : wrong + "\n" + before + "\n" + after;
  }

  // Two rows of up to `most` numbers.
  std::string checkAlignment(int most) {
    const int alphabet = 1 + below(below(2) == 0 ? 4 : 2 * most);
    std::vector<std::uint32_t> rows[2];
    for (auto& row : rows) {
      row.resize(static_cast<std::size_t>(below(most + 1)));
      for (auto& number : row) number = static_cast<std::uint32_t>(below(alphabet));
    }
    if (below(4) == 0) {  // long stretches elsewhere
      std::iota(rows[0].begin(), rows[0].end(), 0U);
      rows[1] = rows[0];
      for (int i = below(4); i >= 0; --i) {
        const auto end = rows[1].begin() + below(static_cast<int>(rows[1].size()) + 1);
        std::rotate(rows[1].begin(), rows[1].begin() + below(static_cast<int>(end - rows[1].begin()) + 1),
                    end);
      }
    }
    const Alignment found = align(rows[0], rows[1]);
    int last = -1;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < rows[0].size(); ++i) {
      const int partner = found.partners[i];
      if (partner < 0) continue;
      if (partner <= last || rows[1][static_cast<std::size_t>(partner)] != rows[0][i]) return "no alignment";
      last = partner;
      ++pairs;
    }
    const auto equal = [&](std::size_t i, std::size_t j) { return rows[0][i] == rows[1][j]; };
    return pairs == commonLength(rows[0].size(), rows[1].size(), equal) ? "" : "not the longest";
  }

 private:
  // What is not said by the commands.
  struct Look {
    std::string head, attribute, comment;
    bool layout = false;
  };

  int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }
  template <std::size_t N>
  const char* oneOf(const char* const (&texts)[N]) {
    return texts[static_cast<std::size_t>(below(N))];
  }

  std::string anyCommand() {
    std::string command = std::string("<cmd fid=\"") + oneOf({"QMF1.", "QMF2.", "", "."}) +
                          oneOf({"F", "I", "T", "E", "U", "NCSCOMMAND"}) + '"';
    command += oneOf({" workplace=\"1\"", " workplace=\"1\"", " workplace=\"2\"", ""});
    if (below(8) == 0) command += oneOf({" note=\"x\"", " note=\"\xC3\xBC\"", " workplace=\"\""});
    if (command.find("workplace") != command.rfind("workplace")) return anyCommand();
    command += '>';
    for (int i = below(3); i > 0; --i) {
      const char* const value = oneOf({"0.5", "0.50", "5", "05", "1:2:3:4", "16909060", "x", ""});
      command += std::string("<param name=\"") + oneOf({"p", "p", "q"}) + "\" value=\"" + value + "\"/>";
    }
    if (below(8) == 0)
      command += oneOf(
          {"<param name=\"p\"/>", "<!-- c -->", "<param/>", "<z> <b/> t</z>", " t\n ", "<![CDATA[ x&]]>"});
    return command + "</cmd>";
  }

  void change(std::vector<std::string>& commands, int times) {
    for (; times > 0; --times) {
      const auto at = commands.begin() + below(static_cast<int>(commands.size()) + 1);
      const int what = below(4);
      if (what == 0 || at == commands.end()) {
        commands.insert(at, anyCommand());
      } else if (what == 1) {
        commands.erase(at);
      } else if (what == 2) {
        *at = anyCommand();
      } else {
        const auto end = std::min(commands.end(), at + 1 + below(4));
        std::rotate(commands.begin() + below(static_cast<int>(at - commands.begin()) + 1), at, end);
      }
    }
  }

  Look anyLayout() { return {"", "", "", true}; }
  Look any() {
    return {oneOf({"", "<?xml version=\"1.0\" encoding=\"windows-1252\"?>", "<!-- head -->"}),
            oneOf({"", " more=\"1\""}), oneOf({"", "<!-- between -->"}), false};
  }

  std::string document(const std::vector<std::string>& commands, const Look& look) {
    const std::string space = look.layout ? oneOf({"\r\n\t", " ", "\n\n"}) : "";
    std::string text = look.head + "<macro name=\"M\"" + look.attribute + "><data>";
    const int place = below(static_cast<int>(commands.size()) + 1);
    for (std::size_t i = 0; i < commands.size(); ++i) {
      if (static_cast<int>(i) == place) text += look.comment;
      text += space + commands[i];
    }
    text += space + "</data></macro>";
    if (look.layout && below(2) == 0) text = replaceAll(std::move(text), "\"", "'");
    if (look.head.find("1252") != std::string::npos) text = replaceAll(std::move(text), "\xC3\xBC", "\xFC");
    return text;
  }

  template <typename Equal>
  static std::size_t commonLength(std::size_t n, std::size_t m, const Equal& equal) {
    std::vector<std::vector<std::size_t>> length(n + 1, std::vector<std::size_t>(m + 1, 0));
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < m; ++j)
        length[i + 1][j + 1] = equal(i, j) ? length[i][j] + 1 : std::max(length[i][j + 1], length[i + 1][j]);
    }
    return length[n][m];
  }

  // In other words than the program's.
  static bool sameValue(std::string_view function, const MacroParameter& a, const MacroParameter& b) {
    if (a.value == b.value || a.name != "p" || !a.hasValue || !b.hasValue) return a == b;
    const std::string values[] = {a.value, b.value};
    const auto isOneOf = [&](const char* first, const char* second) {
      return std::all_of(values, values + 2,
                         [&](const auto& value) { return value == first || value == second; });
    };
    if (function == "F") return isOneOf("0.5", "0.50") || isOneOf("5", "05");
    if (function == "I") return isOneOf("5", "05");
    return function == "T" && (isOneOf("1:2:3:4", "16909060") || isOneOf("5", "05"));
  }
  static bool sameCommand(const MacroCommand& a, const MacroCommand& b) {
    return a.fid == b.fid && a.workplace == b.workplace && a.group == b.group && a.module == b.module &&
           a.widget == b.widget &&
           std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(), b.parameters.end(),
                      [&](const MacroParameter& x, const MacroParameter& y) {
                        return x.name == y.name && sameValue(a.functionName(), x, y);
                      });
  }

  std::string checkPair(const Macro& a, const Macro& b, bool layoutOnly) {
    const MacroDiff diff(a, b, &pairDictionary());
    const bool differs = a.bytes() != b.bytes();
    const bool told = !diff.differences().empty() || diff.nameDiffers() || diff.surroundingsDiffer();
    if (diff.identical() == differs || differs != (told || diff.onlyLayoutDiffers())) return "not told";
    if (layoutOnly && told) return "layout is told as more";
    const auto equal = [&](std::size_t i, std::size_t j) {
      return sameCommand(a.commands()[i], b.commands()[j]);
    };
    if (commonLength(a.commands().size(), b.commands().size(), equal) !=
        diff.counts().same + diff.counts().sameMeaning)
      return "not minimal";
    std::string wrong = checkRows(diff);
    for (const Side side : {Side::kA, Side::kB}) {
      std::vector<std::size_t> all(diff.rows().size()), some;
      for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
      std::sample(all.begin(), all.end(), std::back_inserter(some), below(static_cast<int>(all.size()) + 1),
                  random_);
      for (const auto& rows : {all, some}) {
        if (wrong.empty()) wrong = checkTaking(diff, rows, side);
      }
    }
    return wrong;
  }

  static std::string checkRows(const MacroDiff& diff) {
    using Kind = DiffRow::Kind;
    int nextA = 0, nextB = 0;
    for (std::size_t i = 0; i < diff.rows().size(); ++i) {
      const DiffRow& row = diff.rows()[i];
      if (row.shows(Side::kA) && row.a != nextA++) return "column A is not whole";
      if (row.shows(Side::kB) && row.b != nextB++) return "column B is not whole";
      if (row.a < 0 || row.b < 0) continue;
      const MacroCommand &inA = diff.a().commands()[static_cast<std::size_t>(row.a)],
                         &inB = diff.b().commands()[static_cast<std::size_t>(row.b)];
      if (sameCommand(inA, inB) == (row.kind == Kind::kChanged)) return "a change is none";
      if ((inA == inB) != diff.changes(row).empty() || (row.kind == Kind::kSame && inA != inB))
        return "a change is not told";
      const bool moved = row.kind == Kind::kMovedFrom || row.kind == Kind::kMovedTo;
      if (moved && diff.rows()[static_cast<std::size_t>(row.counterpart)].counterpart != static_cast<int>(i))
        return "a moved row has no counterpart";
    }
    return nextA == static_cast<int>(diff.a().commands().size()) &&
                   nextB == static_cast<int>(diff.b().commands().size())
               ? ""
               : "a command is lost";
  }

  static std::string checkTaking(const MacroDiff& diff, const std::vector<std::size_t>& rows, Side into) {
    std::vector<bool> chosen(diff.rows().size(), false);
    for (const std::size_t row : rows) {
      chosen[row] = true;
      if (diff.rows()[row].counterpart >= 0)
        chosen[static_cast<std::size_t>(diff.rows()[row].counterpart)] = true;
    }
    MacroCommands expected;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
      const DiffRow& row = diff.rows()[i];
      const Side side = chosen[i] == (into == Side::kA) ? Side::kB : Side::kA;
      if (row.shows(side))
        expected.push_back(
            diff.of(side).commands()[static_cast<std::size_t>(side == Side::kA ? row.a : row.b)]);
    }
    const auto taken = apply(diff.of(into), diff.taking(rows, into));
    if (taken) return taken->commands() == expected ? "" : "other commands than those taken";
    const bool kept = reprint(diff.a()) && reprint(diff.b());
    const bool takes = diff.of(into).hasData();
    return kept && takes && taken.failure().kind != Failure::Kind::kTextNotHeld ? taken.failure().text : "";
  }

  std::mt19937 random_;
  const Look plain_{};
};

}  // namespace tessaly
