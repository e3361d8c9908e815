// The window on a disk that fails: the old content stays, the program goes on, the strip says so.
#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include "app/StatusStrip.h"
#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kWorkingCopies = "c:\\programme\\RV48\\bin\\MacroFid";

// A fault of the disk around a folder, which ends with the object: what was there is then there again.
class DiskFault {
 public:
  enum class Kind { kFull, kFolderGone, kFileInPlaceOfFolder, kFolderForbidden, kFolderInPlaceOfFile };

  DiskFault(Kind kind, const fs::path& folder) {
    if (kind == Kind::kFull) {
      std::signal(SIGXFSZ, SIG_IGN);
      ::getrlimit(RLIMIT_FSIZE, &limit_);
      const rlimit none{0, limit_.rlim_max};
      ::setrlimit(RLIMIT_FSIZE, &none);
      return;
    }
    harmed_ = {folder};
    if (kind == Kind::kFolderInPlaceOfFile) harmed_ = {folder / "macro001.mac", folder / "macro888.mac"};
    for (const fs::path& path : harmed_) {
      if (fs::exists(path)) fs::rename(path, aside(path));
      if (kind == Kind::kFolderInPlaceOfFile) fs::create_directory(path);
      if (kind == Kind::kFileInPlaceOfFolder) std::ofstream(path) << "no folder";
      if (kind == Kind::kFolderForbidden)
        fs::create_directory_symlink("/proc", path);  // nobody creates there
    }
  }
  ~DiskFault() {
    if (harmed_.empty()) ::setrlimit(RLIMIT_FSIZE, &limit_);
    for (const fs::path& path : harmed_) {
      fs::remove(path);
      if (fs::exists(aside(path))) fs::rename(aside(path), path);
    }
  }
  DiskFault(const DiskFault&) = delete;
  DiskFault& operator=(const DiskFault&) = delete;

 private:
  static fs::path aside(fs::path path) { return path += ".aside"; }

  std::vector<fs::path> harmed_;
  rlimit limit_{};
};

using Kind = DiskFault::Kind;

class FileFaultTest : public WindowTest {
 protected:
  // Every file below a folder, with its bytes.
  [[nodiscard]] std::map<std::string, std::string> files(const char* folder) const {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::directory_iterator(fixture_.site.root.resolve(folder)))
      found[entry.path().filename()] = read(entry.path().string());
    return found;
  }
  void openBoth() {
    driver().choose(b_.applications, "Football Live");
    driver().clickRow(b_.macros, 0);
    open(a_);
    ASSERT_THAT(told(), HasSubstr("opened"));
  }

  struct Operation {
    const char* told;
    std::function<void()> run;
    bool needsSpace = true;
  };

  // All that write a macro of the folder: 001, or 888, which is new.
  const std::vector<Operation> operations_ = {
      {"NOT saved", [this] { driver().press(a_.saveChanges); }},
      {"NOT created", [this] { create(a_.createMacro, 888); }},
      {"NOT copied", [this] { copyTo(a_.copyMacro, 888); }},
      {"NOT renamed", [this] { rename(a_.renameMacro, "New"); }},
      {"NOT deleted", [this] { driver().press(a_.deleteMacro); }, false}};
};

TEST_F(FileFaultTest, AMacroFolderThatFailsLosesNothing) {
  const auto before = files(kMacroFolder);
  const fs::path folder = fixture_.site.root.resolve(macroPath(1)).parent_path();
  const auto& strip = *fixture_.window->findChild<StatusStrip*>();
  for (const Kind kind : {Kind::kFull, Kind::kFolderGone, Kind::kFileInPlaceOfFolder, Kind::kFolderForbidden,
                          Kind::kFolderInPlaceOfFile}) {
    for (const Operation& operation : operations_) {
      if (kind == Kind::kFull && !operation.needsSpace) continue;
      SCOPED_TRACE(std::string(operation.told) + ", fault " + std::to_string(static_cast<int>(kind)));
      openBoth();
      removeFirst(a_);
      const std::string shown = held(Pane::kA);
      {
        const DiskFault fault(kind, folder);
        operations_.front().run();
        if (&operation != &operations_.front()) operation.run();
        EXPECT_THAT(told(), HasSubstr(operation.told));
        EXPECT_EQ(held(Pane::kA), shown);
        EXPECT_THAT(strip.owed(Pane::kA).toStdString(), HasSubstr("NOT saved"));
      }
      EXPECT_EQ(files(kMacroFolder), before);
    }
  }
  openBoth();
}

TEST_F(FileFaultTest, AMacroThatAnotherProgramIsChangingIsLeftAlone) {
  const auto before = files(kMacroFolder);
  MacroHistory other(fixture_.site.root);
  const auto whileHeld = [&](int number, const MacroHistory::Work& work) {
    return other.whileLocked(macroPath(number), work);
  };
  for (const Operation& operation : operations_) {
    openBoth();
    if (&operation == &operations_.front()) removeFirst(a_);
    EXPECT_TRUE(whileHeld(1, [&] {
      return whileHeld(888, [&]() -> Outcome {
        operation.run();
        return {};
      });
    }));
    EXPECT_THAT(told(), testing::AllOf(HasSubstr(operation.told), HasSubstr("another program")));
    EXPECT_EQ(files(kMacroFolder), before) << operation.told;
  }
  EXPECT_FALSE(fixture_.history.takeFailure());
}

TEST_F(FileFaultTest, WorkingCopiesAndSettingsThatCannotBeWrittenStayAsTheyAre) {
  openBoth();
  driver().clickRow(a_.commands, 0);
  const auto before = files(kWorkingCopies);
  const std::size_t commands = driver().texts(a_.commands).size();
  for (const Kind kind : {Kind::kFull, Kind::kFolderForbidden}) {
    const bool full = kind == Kind::kFull;
    {
      const DiskFault fault(kind, fixture_.site.root.resolve(kWorkingCopies));
      if (full) driver().press(a_.deleteCommand);
      EXPECT_TRUE(!full || told().starts_with("command 1 NOT deleted")) << told();
      driver().choose(a_.macros, "002");
      EXPECT_THAT(told(), HasSubstr("NOT opened"));
      EXPECT_EQ(selected(a_.macros), "") << "no macro stands chosen above the commands of another";
      asked();
      fixture_.driver->close();
      EXPECT_THAT(asked(), testing::ElementsAre(HasSubstr("settings could not be written")))
          << "a box, for the strip is gone in a moment";
      fixture_.window->show();
    }
    EXPECT_EQ(files(kWorkingCopies), before);
    driver().choose(a_.macros, "001");
    EXPECT_EQ(driver().texts(a_.commands).size(), commands);
    driver().clickRow(a_.commands, 0);
  }
}

TEST_F(FileFaultTest, WhatWasBuiltStaysInItsDialogUntilTheDiskTakesIt) {
  openBoth();
  for (const auto& [act, button] : {std::pair(a_.newCorvane, "insertEnd"), {a_.modifyCommand, "modify"}}) {
    driver().clickRow(a_.commands, 0);
    driver().press(act, [&, act = act, button = button](QDialog& dialog) {
      const DialogDriver user(dialog);
      if (act == a_.newCorvane) {
        user.type("words", "ME2.KEY4.ON.SET");
        user.key(Qt::Key_Return);
        user.choose("choices", "On");
      }
      {
        const DiskFault fault(Kind::kFull, {});
        user.click(button);
        EXPECT_THAT(asked(), testing::ElementsAre(HasSubstr("NOT changed: ")));
      }
      user.click(button);
      EXPECT_FALSE(dialog.isVisible());
    });
  }
  EXPECT_EQ(told(), "command 1 modified");
}

}  // namespace
}  // namespace tessaly
