// Takes the pictures of the documents: each window on the sample site, in a state that a user would meet.
//   tessaly-screenshots SITE-ROOT FOLDER
#include <cstdio>
#include <exception>

#include <QApplication>
#include <QDir>

#include "app/CopyMacroDialog.h"
#include "app/CreateMacroDialog.h"
#include "dictionary/InterfaceFile.h"
#include "editors/ClassicEditorDialog.h"
#include "editors/CreateCommandDialog.h"
#include "editors/EnterTimecodeDialog.h"
#include "editors/EnterValueDialog.h"
#include "editors/ModifyCommandDialog.h"
#include "editors/MultipleCommandsDialog.h"
#include "editors/SelectInputDialog.h"
#include "model/SiteBrowser.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/TestSite.h"

namespace {

using namespace tessaly;

class Camera {
 public:
  Camera(const char* root, QString folder) : root_(root), folder_(std::move(folder)), lists_(root_) {
    loadFunctionDictionary(root_, dictionary_,
                           [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); });
    sources_ = inputSources(dictionary_);
  }

  void takeAll() {
    takeEditors();
    takeClassic();
    takeSmall();
  }

 private:
  void save(QDialog& dialog, const char* name) const {
    QTest::qWait(50);
    if (!dialog.grab().save(QDir(folder_).filePath(QLatin1String(name)))) throw std::runtime_error(name);
  }

  void takeEditors() {
    CreateCommandDialog create(context_, 1, true);
    const DialogDriver user(create);
    user.click("me");
    user.choose("subgroup1", "ME 1");
    user.type("search1", "KEY2");
    user.choose("results1", "KEY2");
    user.choose("found", "ME 1 Key 2 Clip Set");
    user.type("value", "48");
    save(create, "create-command.png");

    MacroCommand command;
    command.fid = "QMF2.ME1.KEY1.CLIP.SET";
    command.workplace = "1";
    command.parameters.push_back({"VALUE", "0.48", "0.48"});
    ModifyCommandDialog modify(context_, command);
    const DialogDriver modifier(modify);
    save(modify, "modify-command.png");

    MultipleCommandsDialog multiple(context_, 1, 0,
                                    [](const CommandDraft&, int, int, InsertMode) { return true; });
    const DialogDriver collector(multiple);
    collector.click("ME1.KEY1.KEY");
    save(multiple, "multiple-commands.png");
  }

  void takeClassic() {
    ClassicEditorDialog classic(context_, true, 1);
    const DialogDriver user(classic);
    user.choose("mainGroups", "Me1");
    user.choose("subgroups", "Key2");
    user.choose("functions", "Clip");
    user.choose("actions", "set by value");
    save(classic, "classic-command.png");
  }

  void takeSmall() {
    EnterValueDialog value(48, QStringLiteral("Range: 0% / 100%"), 0, 100);
    const DialogDriver number(value);
    save(value, "enter-value.png");
    EnterTimecodeDialog timecode({10, 20, 30, 5});
    const DialogDriver time(timecode);
    save(timecode, "enter-timecode.png");
    SelectInputDialog input(QStringLiteral("Select Input"), sources_);
    const DialogDriver source(input);
    save(input, "select-input.png");
    std::vector<std::string> names(kMacroNumbers);
    names[7] = "Clock and logo on";
    CopyMacroDialog copy("001", "Opening titles", 7, names);
    const DialogDriver copier(copy);
    save(copy, "copy-macro.png");
    CreateMacroDialog create(8, names);
    const DialogDriver creator(create);
    save(create, "create-macro.png");
  }

  SiteRoot root_;
  QString folder_;
  FunctionDictionary dictionary_;
  DecodingLists lists_;
  RecordingMessages messages_;
  std::vector<PanelSource> sources_;
  PanelClient client_;
  int frameRate_ = 25;
  EditorContext context_{{root_, messages_},   dictionary_, lists_, sources_, client_,
                         [] { return false; }, frameRate_};
};

}  // namespace

int main(int argc, char** argv) {
  QApplication toolkit(argc, argv);
  if (argc != 3) {
    std::fputs("usage: tessaly-screenshots SITE-ROOT FOLDER\n", stderr);
    return 2;
  }
  try {
    Camera(argv[1], QString::fromLocal8Bit(argv[2])).takeAll();
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "no picture: %s\n", problem.what());
    return 1;
  }
  return 0;
}
