// What the window does to the files of pane B, act by act, and what its next start would find.

#include <cstdio>
#include <cstring>
#include <memory>

#include "app/RecoveredBytes.h"
#include "app/WorkingCopy.h"
#include "platform/Files.h"
#include "platform/SitePlace.h"

namespace tessaly {
namespace {

constexpr const char* kUsage =
    "usage: tessaly-window-files ROOT ACT...\n"
    "ACT is start, edit=VALUE, undo, redo, save, discard, or look\n";
constexpr const char* kFolder = "c:\\programme\\RV48\\appli\\Show\\CP1\\macroWP1\\";
constexpr const char* kWorking = "c:\\programme\\RV48\\bin\\MacroFid\\tempB.mac";

class Silent final : public Messages {
 public:
  void show(const std::string&, MessageIcon) override {}
  bool ask(const std::string&, MessageIcon) override { return false; }
};

std::string firstValue(const std::string& bytes) {
  constexpr std::string_view kBefore = " value=\"";
  const std::size_t at = bytes.find(kBefore);
  if (at == std::string::npos) return "none";
  const std::size_t begin = at + kBefore.size();
  return bytes.substr(begin, bytes.find('"', begin) - begin);
}

class PaneFiles {
 public:
  explicit PaneFiles(const std::string& folder) : root_(folder) {}

  [[nodiscard]] bool act(const std::string& act) {
    if (act == "start") return start();
    if (act == "look") return look();
    if (act == "undo") return copy_.undo().done();
    if (act == "redo") return copy_.redo().done();
    if (act == "save") return save();
    if (act == "discard") return discard();
    return act.starts_with("edit=") && edit(act.substr(std::strlen("edit=")));
  }

  // What the window would warn of: the acts are done, and an end of the program now would lose something.
  [[nodiscard]] bool isWarned() {
    const bool steps = copy_.takeStepsTrouble().has_value();
    return copy_.takeRecordTrouble().has_value() || steps || unflushed_;
  }

 private:
  static MacroTarget target() { return {PaneSource::kHarddisk, kFolder, {}, 0, "001", "Macro"}; }

  // Takes up what was left unsaved, else opens the macro.
  bool start() {
    const auto record = copy_.recovery().read();
    auto bytes = record ? readFile(root_, kWorking) : Expected<std::string>(std::string());
    if (!record && !isNothing(record.failure())) return false;
    if (!bytes && !isNothing(bytes.failure())) return false;
    if (record && bytes && judgeRecovered(root_, copy_.recovery(), *record, *bytes) != RecoveredBytes::kSaved)
      return copy_.takeUp(*record, *std::move(bytes)).done();
    copy_.recovery().remove();
    auto loan = copy_.lend();
    return loan && copyFile(root_, target().file(), loan->path()) && loan->show(target(), true);
  }

  bool edit(const std::string& value) {
    SetValues values;
    for (int command = 0; command < copy_.commandCount(); ++command)
      values.values.emplace_back(command, value);
    return copy_.apply(values).done();
  }

  bool save() {
    const auto loan = copy_.lendToSave();
    const Outcome saved = loan ? writeFile(root_, target().file(), copy_.bytes()) : loan.failure();
    if (!saved.written()) return false;
    copy_.noteSaved();
    unflushed_ = !saved;
    return true;
  }

  bool discard() {
    copy_.leaveEditState();
    return copy_.clear().done();
  }

  // The unsaved changes, and every content that undo and redo lead to.
  bool look() {
    const auto record = copy_.recovery().read();
    const std::string bytes = readFile(root_, kWorking).value_or("");
    const auto how =
        record ? judgeRecovered(root_, copy_.recovery(), *record, bytes) : RecoveredBytes::kSaved;
    if (!start()) return false;
    const bool unsaved = how != RecoveredBytes::kSaved;
    std::printf("%s%s", unsaved ? "unsaved" : "saved", how == RecoveredBytes::kForeign ? ", foreign" : "");
    const EditHistory& row = copy_.steps();
    for (std::size_t position = 0; position <= row.size(); ++position) {
      const auto content = row.bytesAt(position, copy_.bytes());
      const bool right = content && contentCheck(*content) == row.checkAt(position) &&
                         (!row.savedAt(position) || readFile(root_, target().file()) == *content);
      std::printf(" %s%s", right ? firstValue(*content).c_str() : "WRONG",
                  position == row.position() ? "*" : "");
    }
    std::printf("%s\n", copy_.takeStepsTrouble() ? ", steps lost" : "");
    return true;
  }

  SiteRoot root_;
  Silent messages_;
  bool unflushed_ = false;  // the last save
  WorkingCopy copy_{{root_, messages_}, kWorking, RecoveryFile(root_, 'B')};
};

}  // namespace
}  // namespace tessaly

int main(int count, char** words) {
  if (count < 3) {
    std::fputs(tessaly::kUsage, stderr);
    return 2;
  }
  tessaly::PaneFiles pane(words[1]);
  bool done = true;
  for (int i = 2; done && i < count; ++i) {
    done = pane.act(words[i]);
    if (!done) std::fprintf(stderr, "%s failed\n", words[i]);
  }
  if (pane.isWarned())
    std::fputs("what is done may be lost in a power cut\n", stderr);
  else if (done)
    return 0;
  return 1;
}
