#include "cli/CommandSession.h"

#include <algorithm>

#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"
#include "review/BatchRecovery.h"

namespace tessaly {
namespace {

// Characters of several bytes that steer instead of being shown: the upper control characters, marks of the
// writing direction, and line and paragraph separators.
constexpr std::pair<std::string_view, std::string_view> kSteering[] = {
    {"\xD8\x9C", "\\u061c"},     {"\xE2\x80\x8E", "\\u200e"}, {"\xE2\x80\x8F", "\\u200f"},
    {"\xE2\x80\xA8", "\\u2028"}, {"\xE2\x80\xA9", "\\u2029"}, {"\xE2\x80\xAA", "\\u202a"},
    {"\xE2\x80\xAB", "\\u202b"}, {"\xE2\x80\xAC", "\\u202c"}, {"\xE2\x80\xAD", "\\u202d"},
    {"\xE2\x80\xAE", "\\u202e"}, {"\xE2\x81\xA6", "\\u2066"}, {"\xE2\x81\xA7", "\\u2067"},
    {"\xE2\x81\xA8", "\\u2068"}, {"\xE2\x81\xA9", "\\u2069"},
};
constexpr unsigned char kDelete = 0x7F;
constexpr unsigned char kFirstPrinted = 0x20;

std::string controlEscape(char c) {
  switch (c) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return format("\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
  }
}

// Takes the character at the start of valid UTF-8 off when it steers, and gives its spelling; empty
// otherwise.
std::string takeSteering(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < kFirstPrinted || first == kDelete) {
    text.remove_prefix(1);
    return controlEscape(static_cast<char>(first));
  }
  if (first == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0) {
    std::string spelled = format("\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(text[1])));
    text.remove_prefix(2);
    return spelled;
  }
  for (const auto& [character, spelled] : kSteering) {
    if (!text.starts_with(character)) continue;
    text.remove_prefix(character.size());
    return std::string(spelled);
  }
  return {};
}

// Characters of `kept` stay as they are.
std::string spelledOut(std::string_view utf8, std::string_view kept) {
  std::string result;
  result.reserve(utf8.size());
  while (!utf8.empty()) {
    std::string spelled;
    if (kept.find(utf8[0]) == kept.npos) spelled = takeSteering(utf8);
    if (spelled.empty()) {
      result += utf8[0];
      utf8.remove_prefix(1);
    }
    result += spelled;
  }
  return result;
}

}  // namespace

void StreamMessages::print(std::string text) {
  for (const auto& [path, name] : names_) text = replaceAll(std::move(text), path, name);
  stream_ << outputText(text) << '\n';
}

void StreamMessages::show(const std::string& text, MessageIcon) {
  ++count_;
  print(text);
}

bool StreamMessages::ask(const std::string& text, MessageIcon icon) {
  show(text, icon);
  return false;
}

CommandSession::CommandSession(SiteRoot root, const ProgramStreams& streams)
    : root_(std::move(root)),
      streams_(streams),
      messages_(streams.errors),
      decodingLists_(root_),
      history_(root_, limits()) {}

MacroHistory::Limits CommandSession::limits() {
  MacroHistory::Limits limits;
  limits.patience = kPatience;
  return limits;
}

const FunctionDictionary& CommandSession::dictionary() {
  if (!dictionary_) {
    dictionary_ = std::make_unique<FunctionDictionary>();
    loadFunctionDictionary(root_, *dictionary_, [this](const std::string& text) {
      dictionaryWhole_ = false;
      streams_.errors << outputText(text) << '\n';
    });
  }
  return *dictionary_;
}

void CommandSession::recoverBatches(const BatchPlaces::PanelShelves& panels) {
  waitingBatches_.clear();
  BatchPlaces places(root_, history_, panels);
  for (const BatchRecovery& recovered : tessaly::recoverBatches(places)) {
    if (recovered.how == BatchRecovery::How::kWaits)
      waitingBatches_.push_back(recovered.describe());
    else
      messages_.print(recovered.describe());
  }
}

int CommandSession::cannotOpen(const std::string& word, const Failure& failure) {
  return failed(word + ' ' + failure.text);
}

int CommandSession::readFrom(const std::string& word,
                             const std::function<int(const FileOperand& file)>& work) {
  const auto file = FileOperand::open(root_, streams_, word, FileUse::kRead);
  if (!file) return cannotOpen(word, file.failure());
  if (file->isStream()) call(file->path(), file->shown());
  return work(*file);
}

int CommandSession::writeTo(const std::string& word, FileUse use, MacroChange change, const Work& work,
                            const Work& check) {
  const auto file = FileOperand::open(root_, streams_, word, use);
  if (!file) return cannotOpen(word, file.failure());
  if (file->isStream()) call(file->path(), file->shown());
  const auto write = [&]() -> Outcome {
    if (check) {
      if (Outcome checked = check(file->path()); !checked) return checked;
    }
    if (!file->isStream())
      static_cast<void>(history_.keepFile(file->path(), change));  // the history notes why not
    return work(file->path());
  };
  const Outcome done = file->isStream() ? write() : history_.whileLocked(file->path(), write);
  if (!done.written()) {
    const bool inUse = done.failure().kind == Failure::Kind::kInUse;
    return inUse ? cannotOpen(word, done.failure()) : failed(done.failure().text);
  }
  if (!done && !file->isStream()) warn(file->shown() + ' ' + done.failure().text);
  if (const Outcome out = file->deliver(root_, streams_); !out) return cannotOpen(word, out.failure());
  return warned_ ? kExitFailed : kExitDone;
}

void CommandSession::line(std::string_view bytes) { streams_.out << outputText(bytes) << '\n'; }

void CommandSession::field(std::string_view name, std::string_view bytes) {
  streams_.out << name << ':';
  if (!bytes.empty()) streams_.out << ' ' << outputText(bytes);
  streams_.out << '\n';
}

void CommandSession::warn(const std::string& text) {
  warned_ = true;
  messages_.print(text);
}

int CommandSession::failed(const std::string& reason) {
  if (messages_.count() == 0) messages_.print(reason);
  return kExitFailed;
}

int CommandSession::wrongUsage(const std::string& reason) {
  usageIsWrong_ = true;
  messages_.print(reason);
  return kExitWrongUsage;
}

std::string outputText(std::string_view bytes) {
  std::string text = displayUtf8(bytes);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return spelledOut(text, "\t");
}

std::string outputName(std::string_view bytes) { return spelledOut(displayUtf8(bytes), {}); }

}  // namespace tessaly
