#include <string>

#include "platform/Text.h"
#include "review/SheetFiles.h"

namespace tessaly {
namespace {

constexpr int kNoteLines = 8;

constexpr std::string_view kStyle = R"(
  :root { color-scheme: light dark; }
  body { font: 0.95rem/1.4 Helvetica, Arial, sans-serif; max-width: 60rem; margin: 1.5rem auto; padding: 0 1rem; }
  h1, h2 { border-bottom: 1px solid; }
  h1, h2, h3 { break-after: avoid; overflow-wrap: anywhere; }
  table { border-collapse: collapse; width: 100%; }
  tr { break-inside: avoid; }
  th { text-align: left; font-weight: normal; opacity: 0.7; }
  td, th { padding: 0.1rem 0.6rem 0.1rem 0; vertical-align: top; overflow-wrap: anywhere; }
  .n { text-align: right; width: 3rem; font-variant-numeric: tabular-nums; }
  .after td { border-bottom: 1px solid #8888; width: 50%; }
  .place, .foot, .none { opacity: 0.7; overflow-wrap: anywhere; }
  .findings { margin: 0; padding-left: 1.2rem; }
  .note { border-bottom: 1px solid #888; height: 1.8rem; }
  @media print { body { margin: 0; max-width: none; } section { break-before: page; } }
)";

std::string escaped(const std::string& bytes) {
  std::string text = replaceAll(visibleUtf8(bytes), "&", "&amp;");
  text = replaceAll(std::move(text), "<", "&lt;");
  text = replaceAll(std::move(text), ">", "&gt;");
  return replaceAll(std::move(text), "\"", "&quot;");
}

std::string_view pageSize(Paper paper) {
  switch (paper) {
    case Paper::kA4:
      return "A4";
    case Paper::kA5:
      return "A5";
    case Paper::kLetter:
      return "letter";
  }
  return {};
}

class Html {
 public:
  Html(const SheetOptions& options, const SheetWords& words) : options_(options), words_(words) {}

  void begin(const Sheet& sheet) {
    text_ += "<!DOCTYPE html>\n<html lang=\"" + escaped(words_.language) +
             "\">\n<head>\n<meta charset=\"utf-8\">\n" +
             "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" + escaped(sheet.title) +
             "</title>\n<style>";
    text_.append(kStyle).append("  @page { size: ").append(pageSize(options_.paper));
    text_ += " portrait; margin: 15mm; }\n</style>\n</head>\n<body>\n<main>\n";
    element("h1", sheet.title);
  }

  void table(const Sheet& sheet) {
    element("h2", words_.macros);
    if (sheet.macros.empty()) return element("p class=\"none\"", words_.none);
    const std::string* place = nullptr;
    for (std::size_t i = 0; i < sheet.macros.size(); ++i) {
      const SheetMacro& macro = sheet.macros[i];
      if (place == nullptr || *place != macro.place) {
        if (place != nullptr) text_ += "</tbody></table>\n";
        if (!macro.place.empty()) element("h3", macro.place);
        head({words_.number, words_.name});
      }
      place = &macro.place;
      const std::string link = "<a href=\"#m" + std::to_string(i + 1) + "\">";
      text_ += "<tr><td class=\"n\">" + link + escaped(macro.number) + "</a></td><td>" + link +
               escaped(macro.name) + "</a></td></tr>\n";
    }
    text_ += "</tbody></table>\n";
  }

  void macro(const SheetMacro& macro, std::size_t number) {
    const std::string id = "m" + std::to_string(number);
    text_ += "<section id=\"" + id + "\" aria-labelledby=\"" + id + "h\">\n";
    element("h2 id=\"" + id + "h\"", headOf(macro, words_));
    if (!macro.place.empty()) element("p class=\"place\"", macro.place);
    if (!macro.unread.empty()) element("p", filled(words_.unread, macro.unread));
    if (options_.findings && !macro.findings.empty()) {
      element("h3", words_.findings);
      findings(macro.findings);
    }
    if (macro.unread.empty()) {
      commands(macro);
      if (options_.after && !macro.commands.empty()) after(macro);
    }
    if (options_.notes) {
      element("h3", words_.notes);
      for (int i = 0; i < kNoteLines; ++i) text_ += "<div class=\"note\"></div>\n";
    }
    text_ += "</section>\n";
  }

  [[nodiscard]] std::string end() {
    text_ += "</main>\n<footer>\n";
    element("p class=\"foot\"", dateText(options_.date));
    text_ += "</footer>\n</body>\n</html>\n";
    return std::move(text_);
  }

 private:
  // The tag with its attributes.
  void element(const std::string& tag, const std::string& content) {
    text_ += '<' + tag + '>' + escaped(content) + "</" + tag.substr(0, tag.find(' ')) + ">\n";
  }
  void head(const std::vector<std::string>& columns, std::string_view attributes = {}) {
    text_.append("<table").append(attributes).append("><thead><tr>");
    for (const std::string& column : columns) text_ += "<th scope=\"col\">" + escaped(column) + "</th>";
    text_ += "</tr></thead><tbody>\n";
  }
  void findings(const Findings& findings) {
    text_ += "<ul class=\"findings\">";
    for (const Finding& finding : findings) text_ += "<li>" + escaped(words_.finding(finding)) + "</li>";
    text_ += "</ul>\n";
  }

  void commands(const SheetMacro& macro) {
    if (macro.commands.empty()) element("p class=\"none\"", words_.empty);
    const std::string* destination = nullptr;
    for (std::size_t i = 0; i < macro.commands.size(); ++i) {
      const SheetCommand& command = macro.commands[i];
      if (destination == nullptr || *destination != command.destination) {
        if (destination != nullptr) text_ += "</tbody></table>\n";
        if (!command.destination.empty()) element("h3", command.destination);
        head({words_.number, words_.command});
      }
      destination = &command.destination;
      text_ += "<tr><td class=\"n\">" + std::to_string(i + 1) + "</td><td>" + escaped(command.line);
      if (options_.findings && !command.findings.empty()) findings(command.findings);
      text_ += "</td></tr>\n";
    }
    if (destination != nullptr) text_ += "</tbody></table>\n";
  }

  void after(const SheetMacro& macro) {
    element("h3", words_.after);
    if (macro.after.empty() && macro.untold.empty()) element("p class=\"none\"", words_.nothing);
    for (const SheetGroup& group : macro.after) {
      if (!group.destination.empty()) element("h4", group.destination);
      head({words_.name, words_.value}, " class=\"after\"");
      for (const SheetValue& value : group.values)
        text_ += "<tr><td>" + escaped(value.name) + "</td><td>" + escaped(value.shown) + "</td></tr>\n";
      text_ += "</tbody></table>\n";
    }
    if (!macro.untold.empty())
      element("p class=\"none\"", filled(words_.untold, countedFromOne(macro.untold)));
  }

  const SheetOptions& options_;
  const SheetWords& words_;
  std::string text_;
};

}  // namespace

std::string sheetHtml(const Sheet& sheet, const SheetOptions& options, const SheetWords& words) {
  Html html(options, words);
  html.begin(sheet);
  if (sheet.ofMany || sheet.macros.empty()) html.table(sheet);
  for (std::size_t i = 0; i < sheet.macros.size(); ++i) html.macro(sheet.macros[i], i + 1);
  return html.end();
}

}  // namespace tessaly
