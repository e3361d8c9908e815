#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/MacroFiles.h"
#include "review/MacroSearch.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

// Hits on their way out, file by file.
class Finder {
 public:
  Finder(CommandSession& session, MacroSearch& search, bool json)
      : session_(session), search_(search), json_(json) {}

  // False when the file cannot be read; the reason is told.
  bool look(const std::string& path, const std::string& shown) {
    if (isKeyFile(path)) {
      const auto bytes = readFile(session_.root(), path);
      if (!bytes) return unread(shown, bytes.failure());
      KeyFile keys;
      keys.parse(*bytes);
      add(shown, keys.name(), search_.find(keys));
      return true;
    }
    const auto macro = readMacro(session_.root(), path);
    if (!macro) return unread(shown, macro.failure());
    add(shown, macro->name().value_or(""), search_.find(*macro));
    return true;
  }

  void end() {
    if (json_) printJson(session_, {{"hits", hits_}, {"found", list_}});
  }
  [[nodiscard]] std::size_t hits() const { return hits_; }

 private:
  bool unread(const std::string& shown, const Failure& failure) {
    session_.warn(shown + ' ' + failure.text);
    return false;
  }

  void add(const std::string& shown, const std::string& name, const std::vector<SearchHit>& hits) {
    if (hits.empty()) return;
    hits_ += hits.size();
    Json commands = Json::array();
    for (const SearchHit& hit : hits) {
      if (json_) {
        commands.push_back({{"command", hit.command}, {"line", displayUtf8(hit.line)}});
      } else {
        session_.line(outputName(shown) + '\t' + std::to_string(hit.command) + '\t' + hit.line);
      }
    }
    if (json_)
      list_.push_back(
          {{"path", displayUtf8(shown)}, {"name", displayUtf8(name)}, {"commands", std::move(commands)}});
  }

  CommandSession& session_;
  MacroSearch& search_;
  const bool json_;
  std::size_t hits_ = 0;
  Json list_ = Json::array();
};

bool findIn(CommandSession& session, const std::string& word, Finder& finder) {
  const std::string path = sitePathOf(word);
  if (word == "-" || !isFolder(session.root(), path)) {
    return session.readFrom(word, [&](const FileOperand& file) {
      return finder.look(file.path(), file.shown()) ? kExitDone : kExitFailed;
    }) == kExitDone;
  }
  bool read = true;
  for (const MacroFolder& folder : macroFoldersUnder(session.root(), path))
    for (const std::string& file : folder.files) read = finder.look(file, file) && read;
  return read;
}

}  // namespace

int runFind(CommandSession& session, Arguments& arguments) {
  constexpr std::size_t kMostPaths = 100'000;
  const bool json = arguments.flag("--json");
  if (!arguments.complete(2, kMostPaths)) return session.wrongUsage(arguments.problem());
  auto query = MacroQuery::parse(arguments[0]);
  if (!query) return session.wrongUsage(query.failure().text);
  MacroSearch search(*std::move(query), {session.dictionary(), session.decodingLists()});
  Finder finder(session, search, json);
  bool read = true;
  for (std::size_t i = 1; i < arguments.size(); ++i) read = findIn(session, arguments[i], finder) && read;
  finder.end();
  return read && finder.hits() > 0 && session.dictionaryWhole() ? kExitDone : kExitFailed;
}

}  // namespace tessaly
