#pragma once

#include <random>
#include <string>
#include <vector>

#include "platform/Text.h"
#include "review/MacroRetarget.h"

// Random macros and rules of replacement, set against a model that knows a macro as a row of texts and says
// which of them change. What is wrong, or nothing.
namespace tessaly {

// F has a float "p", I an input "p", and so has X of ME1 and ME2, whose third one takes "q"; G is of ME1 and
// ME2 alone.
inline const FunctionDictionary& retargetDictionary() {
  static const auto* const made = [] {
    auto* const dictionary = new FunctionDictionary;
    const auto add = [&](const char* name, auto FunctionTemplate::*kind, const char* parameter) {
      FunctionTemplate definition;
      definition.name = name;
      (definition.*kind).emplace_back().name = parameter;
      dictionary->add(std::move(definition));
    };
    for (const char* const name : {"ME1.F", "ME2.F", "ME3.F", "ME1.G", "ME2.G"})
      add(name, &FunctionTemplate::floats, "p");
    for (const char* const name : {"ME1.I", "ME2.I", "ME3.I", "ME1.X", "ME2.X"})
      add(name, &FunctionTemplate::inputs, "p");
    add("ME3.X", &FunctionTemplate::inputs, "q");
    dictionary->finish();
    return dictionary;
  }();
  return *made;
}

class RetargetModel {
 public:
  explicit RetargetModel(unsigned seed) : random_(seed) {}

  std::string check() {
    makeRule();
    makeDocument();
    const auto macro = Macro::read(joined(texts_));
    if (!macro || !macro->kept()) return "a macro of the model is none\n" + joined(texts_);
    SiteRoot root("/nowhere");
    DecodingLists lists(root);
    auto retarget = MacroRetarget::make(rule_, {retargetDictionary(), lists});
    if (!retarget) return rule_.text() + ": " + retarget.failure().text;
    const RetargetProposals proposals = retarget->propose(*macro);
    std::string wrong = compare(*macro, proposals);
    if (wrong.empty() && below(4) == 0) wrong = checkOddBytes(*retarget);
    return wrong.empty() ? wrong : wrong + ", " + rule_.text() + "\n" + joined(texts_);
  }

 private:
  using Kind = RetargetRule::Kind;
  // What the rule makes of a command by the model: the texts with these numbers become others.
  struct Touched {
    int command;
    std::vector<std::pair<std::size_t, std::string>> texts;  // none: it cannot be done
  };

  int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }
  template <std::size_t N>
  std::string oneOf(const char* const (&some)[N]) {
    return some[static_cast<std::size_t>(below(N))];
  }

  static std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += text;
    return all;
  }

  void makeRule() {
    const std::string a = std::to_string(1 + below(3)), b = std::to_string(1 + (a[0] - '0' + below(2)) % 3);
    switch (below(5)) {
      case 0:
        rule_ = {.kind = Kind::kDestination, .from = "QMF" + a, .to = "QMF" + b};
        break;
      case 1:
        rule_ = {.kind = Kind::kDestination, .from = "Workplace" + a, .to = "Workplace" + b};
        break;
      case 2:
        rule_ = {.kind = Kind::kSegment, .from = "ME" + a, .to = "ME" + b};
        break;
      case 3:
        rule_ = {.kind = Kind::kSource, .from = a, .to = b};
        break;
      default:
        rule_ = {.kind = Kind::kValue, .parameter = below(2) == 0 ? "p" : "", .from = ".5", .to = "2"};
    }
    from_ = a;
    to_ = b;
  }

  void add(std::string text) { texts_.push_back(std::move(text)); }

  // Some letters as references, which must stay where nothing changes.
  std::string spelled(const std::string& text) {
    std::string spelling;
    for (const char c : text) {
      if (below(12) == 0) {
        spelling += "&#" + std::to_string(static_cast<int>(c)) + ";";
      } else {
        spelling += c;
      }
    }
    return spelling;
  }

  std::size_t addAttribute(const char* name, const std::string& text) {
    const std::string quote = oneOf({"\"", "'"});
    add(oneOf({" ", "\r\n\t", "  "}) + name + oneOf({"=", " = ", "=\n"}) + quote);
    add(spelled(text));
    add(quote);
    return texts_.size() - 2;
  }

  void makeDocument() {
    const bool latin = below(3) == 0;
    if (!latin && below(4) == 0) add("\xEF\xBB\xBF");
    add(latin ? "<?xml version=\"1.0\" encoding=\"windows-1252\"?>" : "");
    add(oneOf(
        {"", "\n<!-- <macro><data><cmd fid='QMF1.ME1.F'/></data></macro> -->\r\n", "<!DOCTYPE macro>"}));
    add("<macro name=\"M\"" + oneOf({"", " more=\"<cmd>\"", " more='\"'"}) + ">");
    add(oneOf({"", "<other><data><cmd fid='QMF1.ME1.F' workplace='1'/></data></other>"}) + "<data>");
    for (int number = 0, count = below(9); number < count; ++number) addCommand(number, latin);
    add("</data>" + oneOf({"", "<data><cmd fid='QMF1.ME1.F' workplace='1'/></data>"}) + "</macro>\n");
  }

  void addCommand(int number, bool latin) {
    add(oneOf({"\r\n  ", "", "<!-- <cmd> -->", "<none/>", "\n"}) + "<cmd");
    Touched touched{number, {}};
    bool about = false;
    const bool isClassic = below(5) == 0;
    const std::string goal = oneOf({"QMF1", "QMF2", "QMF3", "PANEL", ""});
    const std::string me = std::to_string(1 + below(3)), kind = oneOf({"F", "G", "I", "X", "U"});
    const std::string name = isClassic ? "NCSCOMMAND" : "ME" + me + "." + kind;
    const std::string workplace = oneOf({"1", "2", "3"});
    const std::size_t fidPlace = addAttribute("fid", goal + "." + name);
    if (below(3) == 0) add(latin ? " note='\xFC'" : " note='\xC3\xBC>'");
    const std::size_t workplacePlace = addAttribute("workplace", workplace);
    if (rule_.kind == Kind::kDestination && rule_.from[0] == 'Q' && goal == rule_.from)
      touched.texts.emplace_back(fidPlace, rule_.to + "." + name);
    if (rule_.kind == Kind::kDestination && rule_.from[0] == 'W' && goal == "PANEL" && workplace == from_)
      touched.texts.emplace_back(workplacePlace, to_);
    if (rule_.kind == Kind::kSegment && !isClassic && me == from_) {
      about = true;
      const bool other = kind == "X" && (me == "3") != (to_ == "3");
      if (kind != "U" && !(kind == "G" && (to_ == "3" || me == "3")) && !other)
        touched.texts.emplace_back(fidPlace, goal + ".ME" + to_ + "." + kind);
    }
    add(">");
    if (isClassic) {
      addClassic(touched);
    } else {
      for (int i = below(4); i > 0; --i) addParameter(kind, me, touched);
    }
    add(oneOf({"", "<x><param name='p' value='.5'/></x>", "<![CDATA[<param name='p' value='.5'/>]]>", " "}));
    add("</cmd>");
    if (about || !touched.texts.empty()) touched_.push_back(touched);
  }

  void addClassic(Touched& touched) {
    add("<param name='CMD'");
    const std::string me = std::to_string(1 + below(3));
    const std::string text = oneOf({" 21 09 05 00 ", " 21 0A 05 FF ", " 21 09 05 00 7"});
    const std::size_t place = addAttribute("value", "25 0" + me + text);
    add("/>");
    if (rule_.kind == Kind::kSegment && me == from_) touched.texts.emplace_back(place, "25 0" + to_ + text);
  }

  void addParameter(const std::string& kind, const std::string& me, Touched& touched) {
    const std::string name = oneOf({"p", "q"}), value = oneOf({"0.5", ".5", "1", "2", "3", ""});
    add("<param");
    addAttribute("name", name);
    if (below(6) == 0) {
      add("/>");
      return;
    }
    const std::size_t place = addAttribute("value", value);
    add(oneOf({" mine='1'/>", "/>", "><!-- c --></param>"}));
    const std::string input = kind == "X" && me == "3" ? "q" : kind == "X" || kind == "I" ? "p" : "";
    if (rule_.kind == Kind::kSource && name == input && value == from_)
      touched.texts.emplace_back(place, to_);
    const bool isFloat = name == "p" && (kind == "F" || kind == "G") && !(kind == "G" && me == "3");
    if (rule_.kind == Kind::kValue && (rule_.parameter.empty() || name == "p") &&
        (value == ".5" || (isFloat && value == "0.5")))
      touched.texts.emplace_back(place, rule_.to);
  }

  std::string compare(const Macro& macro, const RetargetProposals& proposals) {
    if (proposals.size() != touched_.size()) return "other commands are touched";
    std::vector<bool> ticked;
    std::vector<std::string> expected = texts_;
    for (std::size_t i = 0; i < proposals.size(); ++i) {
      const Touched& touched = touched_[i];
      if (proposals[i].command != touched.command) return "another command is touched";
      if (proposals[i].possible() == touched.texts.empty()) return "possible or not: " + proposals[i].reason;
      ticked.push_back(below(2) == 0);
      if (!ticked.back()) continue;
      for (const auto& [place, text] : touched.texts) expected[place] = text;
    }
    const auto made = apply(macro, MacroRetarget::editOf(proposals, ticked));
    if (!made) return made.failure().text;
    return made->bytes() == joined(expected)
               ? ""
               : "other bytes than those of the ticked commands\n" + made->bytes();
  }

  // Whatever a file holds: what is proposed can be made, and leaves the other commands alone.
  std::string checkOddBytes(MacroRetarget& retarget) {
    std::string bytes = joined(texts_);
    for (int i = below(4); i >= 0; --i)
      bytes[static_cast<std::size_t>(below(static_cast<int>(bytes.size())))] = "<>\"=' &/"[below(8)];
    const auto macro = Macro::read(bytes);
    if (!macro) return {};
    const RetargetProposals proposals = retarget.propose(*macro);
    const auto made = apply(*macro, MacroRetarget::editOf(proposals, std::vector(proposals.size(), true)));
    if (!made) return macro->kept() ? "what was proposed cannot be made: " + made.failure().text : "";
    if (made->commands().size() != macro->commands().size()) return "a command is lost";
    for (std::size_t i = 0, next = 0; i < macro->commands().size(); ++i) {
      const bool mine = next < proposals.size() && proposals[next].command == static_cast<int>(i);
      const bool changes = mine && proposals[next].possible();
      if (mine) ++next;
      if ((made->commands()[i] == macro->commands()[i]) == changes) return "odd bytes: not as proposed";
    }
    return {};
  }

  std::mt19937 random_;
  RetargetRule rule_;
  std::string from_, to_;           // numbers of the rule
  std::vector<std::string> texts_;  // joined they are the macro
  std::vector<Touched> touched_;
};

}  // namespace tessaly
