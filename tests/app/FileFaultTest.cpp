// The window on a disk that fails: the old content stays, the program goes on, the strip says so.
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QLabel>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kMacros = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1";
constexpr const char* kWorkingCopies = "c:\\programme\\RV48\\bin\\MacroFid";

// A fault of the disk around a folder, which ends with the object: what was there is then there again.
class DiskFault {
 public:
  enum class Kind { kFull, kFolderGone, kFileInPlaceOfFolder, kFolderForbidden, kFolderInPlaceOfFile };

  DiskFault(Kind kind, fs::path folder) : kind_(kind), folder_(std::move(folder)) {
    switch (kind_) {
      case Kind::kFull: {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit none{0, limit_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
        return;
      }
      case Kind::kFolderInPlaceOfFile:
        for (const char* name : {"macro001.mac", "macro888.mac"}) {
          if (fs::exists(folder_ / name)) fs::rename(folder_ / name, aside(folder_ / name));
          fs::create_directory(folder_ / name);
        }
        return;
      case Kind::kFolderGone:
      case Kind::kFileInPlaceOfFolder:
      case Kind::kFolderForbidden:
        fs::rename(folder_, aside(folder_));
    }
    if (kind_ == Kind::kFileInPlaceOfFolder) std::ofstream(folder_) << "no folder";
    if (kind_ == Kind::kFolderForbidden)
      fs::create_directory_symlink("/proc", folder_);  // nobody creates there
  }
  ~DiskFault() {
    if (kind_ == Kind::kFull) {
      ::setrlimit(RLIMIT_FSIZE, &limit_);
      return;
    }
    if (kind_ == Kind::kFolderInPlaceOfFile) {
      for (const char* name : {"macro001.mac", "macro888.mac"}) putBack(folder_ / name);
    } else {
      putBack(folder_);
    }
  }
  DiskFault(const DiskFault&) = delete;
  DiskFault& operator=(const DiskFault&) = delete;

 private:
  static fs::path aside(fs::path path) { return path += ".aside"; }
  static void putBack(const fs::path& path) {
    fs::remove(path);
    if (fs::exists(aside(path))) fs::rename(aside(path), path);
  }

  Kind kind_;
  fs::path folder_;
  rlimit limit_{};
};

using Kind = DiskFault::Kind;

class FileFaultTest : public testing::Test {
 protected:
  FileFaultTest() : fixture_(offlineClient()) {}

  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  [[nodiscard]] std::string told() const { return fixture_.status().toStdString(); }
  // Every file below a folder, with its bytes.
  [[nodiscard]] std::map<std::string, std::string> files(const char* folder) const {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::directory_iterator(fixture_.site.root.resolve(folder)))
      found[entry.path().filename()] = fixture_.site.read(entry.path().string());
    return found;
  }
  void open() {
    driver().choose(b_.applications, "Football Live");
    driver().clickRow(b_.macros, 0);
    driver().choose(a_.applications, "Evening News");
    driver().choose(a_.macros, "001");
    ASSERT_THAT(told(), HasSubstr("opened"));
  }
  void pressWith(int button, const char* field, const char* text) {
    driver().press(button, [&](QDialog& dialog) {
      WindowDriver::type(dialog, field, QLatin1String(text));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
  }

  struct Operation {
    const char* told;
    std::function<void()> run;
    bool needsSpace = true;
  };

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
  // All that write a macro of the folder: 001, or 888, which is new.
  const std::vector<Operation> operations_ = {
      {"NOT saved", [this] { driver().press(a_.saveChanges); }},
      {"NOT created",
       [this] {
         driver().press(a_.createMacro, [](QDialog& dialog) {
           WindowDriver::type(dialog, "position", QStringLiteral("888"));
           WindowDriver::type(dialog, "name", QStringLiteral("New"));
           WindowDriver::click(dialog, QStringLiteral("OK"));
         });
       }},
      {"NOT copied", [this] { pressWith(a_.copyMacro, "position", "888"); }},
      {"NOT renamed", [this] { pressWith(a_.renameMacro, "newName", "New"); }},
      {"NOT deleted", [this] { driver().press(a_.deleteMacro); }, false}};
};

TEST_F(FileFaultTest, AMacroFolderThatFailsLosesNothing) {
  const auto before = files(kMacros);
  const fs::path folder = fixture_.site.root.resolve(kMacros);
  for (const Kind kind : {Kind::kFull, Kind::kFolderGone, Kind::kFileInPlaceOfFolder, Kind::kFolderForbidden,
                          Kind::kFolderInPlaceOfFile}) {
    for (const Operation& operation : operations_) {
      if (kind == Kind::kFull && !operation.needsSpace) continue;
      SCOPED_TRACE(std::string(operation.told) + ", fault " + std::to_string(static_cast<int>(kind)));
      open();
      if (&operation == &operations_.front()) {
        driver().clickRow(a_.commands, 0);
        driver().press(a_.deleteCommand);
      }
      const std::string shown = fixture_.site.read(std::string(kWorkingCopies) + "\\tempA.mac");
      {
        const DiskFault fault(kind, folder);
        operation.run();
        EXPECT_THAT(told(), HasSubstr(operation.told));
        EXPECT_EQ(fixture_.site.read(std::string(kWorkingCopies) + "\\tempA.mac"), shown);
      }
      EXPECT_EQ(files(kMacros), before);
    }
  }
  open();
}

TEST_F(FileFaultTest, AMacroThatAnotherProgramIsChangingIsLeftAlone) {
  const auto before = files(kMacros);
  MacroHistory other(fixture_.site.root);
  const auto whileHeld = [&](const char* name, const MacroHistory::Work& work) {
    return other.whileLocked(std::string(kMacros) + name, work);
  };
  for (const Operation& operation : operations_) {
    open();
    if (&operation == &operations_.front()) {
      driver().clickRow(a_.commands, 0);
      driver().press(a_.deleteCommand);
    }
    EXPECT_TRUE(whileHeld("\\macro001.mac", [&] {
      return whileHeld("\\macro888.mac", [&]() -> Outcome {
        operation.run();
        return {};
      });
    }));
    EXPECT_THAT(told(), testing::AllOf(HasSubstr(operation.told), HasSubstr("another program")));
    EXPECT_EQ(files(kMacros), before) << operation.told;
  }
  EXPECT_FALSE(fixture_.history.takeFailure());
}

// Nobody's work is overwritten unseen: what somebody else has written there is told before, and stays unless
// the user says so. The working copy's own file counts for nothing then: what the pane shows is what is
// saved.
TEST_F(FileFaultTest, AMacroThatChangedUnderTheOpenOneIsAskedAbout) {
  const std::string file = std::string(kMacros) + "\\macro001.mac";
  const auto editAndSave = [this] {
    driver().clickRow(a_.commands, 0);
    driver().press(a_.deleteCommand);
    driver().press(a_.saveChanges);
  };
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  editAndSave();
  editAndSave();
  EXPECT_THAT(told(), testing::StartsWith("saved: 001"));
  EXPECT_THAT(fixture_.site.messages.take(), testing::IsEmpty()) << "our own save is no stranger's";
  const std::string elsewhere = "<macro name=\"Elsewhere\"><data></data></macro>";
  for (const bool deleted : {false, true}) {
    if (deleted)
      fs::remove(fixture_.site.root.resolve(file));
    else
      fixture_.site.write(file, elsewhere);
    fixture_.site.messages.answer = false;
    editAndSave();
    EXPECT_THAT(fixture_.site.messages.take(), testing::ElementsAre(HasSubstr("by somebody else")));
    EXPECT_THAT(told(), testing::StartsWith("NOT saved"));
    EXPECT_EQ(fixture_.site.read(file), deleted ? "<missing>" : elsewhere);
    fixture_.site.messages.answer = true;
    fixture_.site.write(std::string(kWorkingCopies) + "\\tempA.mac", elsewhere);
    driver().press(a_.saveChanges);
    EXPECT_THAT(told(), AllOf(testing::StartsWith("saved: 001"), HasSubstr("put right")));
    EXPECT_EQ(fixture_.site.read(file).find("Elsewhere"), std::string::npos);
    fixture_.site.messages.take();
  }
}

TEST_F(FileFaultTest, WorkingCopiesAndSettingsThatCannotBeWrittenStayAsTheyAre) {
  open();
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
      fixture_.site.messages.take();
      fixture_.driver->close();
      EXPECT_THAT(fixture_.site.messages.take(),
                  testing::ElementsAre(HasSubstr("settings could not be written")))
          << "a box, for the strip is gone in a moment";
      fixture_.window->show();
    }
    EXPECT_EQ(files(kWorkingCopies), before);
    driver().choose(a_.macros, "001");
    EXPECT_EQ(driver().texts(a_.commands).size(), commands);
    driver().clickRow(a_.commands, 0);
  }
}

}  // namespace
}  // namespace tessaly
