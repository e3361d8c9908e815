#include "cli/CommandSession.h"

#include <algorithm>

#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"
#include "review/BatchRecovery.h"

namespace tessaly {
namespace {

// As a program's text would have it.
std::string escaped(char32_t character) {
  constexpr char32_t kDelete = 0x7F;
  switch (character) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return format(character <= kDelete ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(character));
  }
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
    // The history notes why not.
    const auto keep = [&] { static_cast<void>(history_.keepFile(file->path(), change)); };
    if (file->isStream()) return work(file->path());
    if (use == FileUse::kWrite) keep();
    if (use == FileUse::kChange) beforeChange_ = keep;
    Outcome done = work(file->path());
    beforeChange_ = nullptr;
    return done;
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
  std::string text(bytes);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return visibleUtf8(text, "\t", &escaped);
}

std::string outputName(std::string_view bytes) { return visibleUtf8(bytes, {}, &escaped); }

}  // namespace tessaly
