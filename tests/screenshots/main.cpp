// Takes the pictures of the documents: each window on a copy of the sample site, in a state that a user would
// meet. With --keep or --against all windows, which are kept small in a folder or compared with those there;
// FOLDER gets what differs, and the exit code is 1.
// With --fit they are as the program fits them into the screen.
//   tessaly-screenshots [--palette light|dark] [--language de|en] [--scale FACTOR] [--size WIDTHxHEIGHT]
//   [--fit]
//                       [--keep KEPT | --against KEPT] SITE-ROOT FOLDER
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <map>
#include <optional>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTableView>

#include "app/Appearance.h"
#include "app/Language.h"
#include "app/MainWindow.h"
#include "app/PaneDescriptor.h"
#include "app/ScreenFit.h"
#include "dictionary/InterfaceFile.h"
#include "editors/ClassicEditorDialog.h"
#include "editors/CreateCommandDialog.h"
#include "editors/MultipleCommandsDialog.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"
#include "tests/app/EveryDialog.h"
#include "tests/editors/DialogDriver.h"
#include "tests/screenshots/KeptPictures.h"
#include "tests/screenshots/WindowPictures.h"
#include "tests/support/TestSite.h"
#include "tests/support/WindowDriver.h"
#include "widgets/QuietToolkit.h"
#include "windows/CompareWindow.h"

namespace {

using namespace tessaly;

// What tells the time of day is another picture every time.
const QSet<QString> kOfTheDay{QStringLiteral("history.png"), QStringLiteral("unsaved-changes.png")};

class Camera {
 public:
  Camera(const QString& root, QString folder, QSize size, KeptPictures* kept)
      : root_(site_.root), folder_(std::move(folder)), size_(size), kept_(kept), lists_(root_) {
    std::filesystem::copy(root.toStdString() + "/c", root_.path() / "c",
                          std::filesystem::copy_options::recursive);
    loadFunctionDictionary(root_, dictionary_,
                           [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); });
    sources_ = inputSources(dictionary_);
  }

  void takeAll() {
    takeMain();
    takeEditors();
    takeClassic();
    takeWindows(
        root_, dictionary_, lists_, size_, [this](QWidget& window, const char* name) { save(window, name); },
        kept_ != nullptr);
    takeDialogs();
  }

  // Of the windows that do not look as they are to.
  [[nodiscard]] int others() const { return others_; }

 private:
  void save(QWidget& window, const char* fileName) {
    QTest::qWait(50);
    // What came in that time is laid out by events of its own, for which a busy machine may have left none.
    for (int round = 0; round < 3; ++round) QApplication::processEvents();
    const QString name = QLatin1String(fileName);
    const QImage grabbed = window.grab().toImage();
    if (kept_ == nullptr) {
      if (!grabbed.save(QDir(folder_).filePath(name))) throw std::runtime_error(fileName);
    } else if (!kOfTheDay.contains(name) && !kept_->take(grabbed, name, QDir(folder_))) {
      std::fprintf(stderr, "%s looks different\n", fileName);
      ++others_;
    }
  }

  // Those of the documents under their names there, the others only to be compared.
  void takeDialogs() {
    static const std::map<std::string, std::string> kInDocuments{
        {"value", "enter-value"},       {"timecode", "enter-timecode"},      {"input", "select-input"},
        {"copy", "copy-macro"},         {"create", "create-macro"},          {"rename", "rename-macro"},
        {"first start", "first-start"}, {"modify command", "modify-command"}};
    EveryDialog every;
    every.visit([this](QDialog& dialog, const char* name) {
      const auto found = kInDocuments.find(name);
      if (found != kInDocuments.end()) {
        const DialogDriver user(dialog);
        save(dialog, (found->second + ".png").c_str());
      } else if (kept_ != nullptr) {
        dialog.show();
        std::string file = "dialog " + std::string(name) + ".png";
        std::replace(file.begin(), file.end(), ' ', '-');
        save(dialog, file.c_str());
      }
    });
  }

  // Pane A with unsaved changes, pane B with nothing chosen yet but its application.
  void takeMain() {
    PanelMacros macros(client_, root_, ftpTransfers(kFtpPort), &readsAsMacro);
    MacroHistory history(root_);
    MainWindow window({{root_, messages_}, dictionary_, lists_, client_, macros, history});
    window.show();
    window.resize(size_);
    QCoreApplication::postEvent(&window, new QEvent(static_cast<QEvent::Type>(kDictionaryLoadedMessage)));
    const WindowDriver user(window);
    user.waitUntilLoaded();
    const auto& b = kPaneDescriptors[1].ids;
    save(window, "main-empty.png");
    user.clickRow(b.applications, 1);
    const auto& a = kPaneDescriptors[0].ids;
    user.clickRow(a.applications, 0);
    user.clickRow(a.macros, 1);
    user.clickRow(a.commands, 2);
    save(window, "main-browsing.png");
    QTest::keyClick(&user.list(a.commands), Qt::Key_4, Qt::ControlModifier);
    QTest::keyClick(&user.list(a.macros), Qt::Key_F, Qt::ControlModifier);
    if (QWidget* field = QApplication::focusWidget()) QTest::keyClicks(field, QStringLiteral("box"));
    save(window, "main-finding.png");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    user.clickRow(a.commands, 2);
    user.press(a.deleteCommand);
    save(window, "main-editing.png");
    takeComparison(window, user);
  }

  // Pane A beside its file, which somebody has changed since.
  void takeComparison(MainWindow& window, const WindowDriver& user) {
    const auto& a = kPaneDescriptors[0].ids;
    user.clickRow(a.commands, 1);
    QTest::keyClick(&user.list(a.commands), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&user.list(a.commands), Qt::Key_Down, Qt::AltModifier);
    const std::string file = macroFile("c:\\programme\\RV48\\appli\\Evening News\\CP1\\macroWP1\\",
                                       user.list(a.macros).selected()->text.substr(0, 3));
    const std::string before = *readFile(root_, file);
    std::string after = before;
    for (const auto& [from, to] : {std::pair("0.48", "0.50"), std::pair("0.625000", "0.625")})
      if (const auto at = after.find(from); at != std::string::npos) after.replace(at, std::strlen(from), to);
    static_cast<void>(writeFile(root_, file, after));
    QApplication::setActiveWindow(&window);
    QTest::keyClick(&window, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    auto* comparison = window.findChild<CompareWindow*>();
    WindowDriver::waitFor([&] { return comparison->findChild<QTableView*>()->model()->rowCount() > 0; },
                          "rows");
    QApplication::setActiveWindow(comparison);
    save(*comparison, "compare.png");
    static_cast<void>(writeFile(root_, file, before));
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

    MultipleCommandsDialog multiple(context_, 1, 0);
    const DialogDriver collector(multiple);
    collector.click("ME1.KEY1.KEY");
    save(multiple, "multiple-commands.png");
  }

  void takeClassic() {
    ClassicEditorDialog classic(context_, true, Destination());
    const DialogDriver user(classic);
    user.choose("mainGroups", "Me1");
    user.choose("subgroups", "Key2");
    user.choose("functions", "Clip");
    user.choose("actions", "set by value");
    save(classic, "classic-command.png");
  }

  TestSite site_;
  SiteRoot root_;
  QString folder_;
  QSize size_;          // of the main window
  KeptPictures* kept_;  // null for pictures of the documents
  int others_ = 0;
  FunctionDictionary dictionary_;
  DecodingLists lists_;
  RecordingMessages messages_;
  std::vector<PanelSource> sources_;
  PanelClient client_;
  int frameRate_ = 25;
  EditorContext context_{{root_, messages_},   dictionary_, lists_, sources_, client_,
                         [] { return false; }, frameRate_};
};

// Before the toolkit starts, which reads it once.
void setScale(int argc, char** argv) {
  for (int i = 1; i + 1 < argc; ++i)
    if (QByteArrayView(argv[i]) == "--scale") qputenv("QT_SCALE_FACTOR", argv[i + 1]);
}

QSize sizeOf(const QString& text) {
  const QStringList parts = text.split(QLatin1Char('x'));
  return parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
}

const QString kKeep = QStringLiteral("keep");
const QString kAgainst = QStringLiteral("against");

int take(const QCommandLineParser& parser, const QStringList& places) {
  std::optional<KeptPictures> kept;
  if (parser.isSet(kKeep)) kept.emplace(parser.value(kKeep), KeptPictures::Mode::kRenew);
  if (parser.isSet(kAgainst)) kept.emplace(parser.value(kAgainst), KeptPictures::Mode::kCompare);
  Camera camera(places[0], places[1], sizeOf(parser.value(QStringLiteral("size"))), kept ? &*kept : nullptr);
  camera.takeAll();
  const QStringList missing = kept ? kept->missing() : QStringList();
  for (const QString& name : missing) std::fprintf(stderr, "%s was not taken\n", qPrintable(name));
  return camera.others() == 0 && missing.isEmpty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  setScale(argc, argv);
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  QCommandLineParser parser;
  parser.addOptions(
      {{QStringLiteral("palette"), QString(), QStringLiteral("NAME"), QStringLiteral("light")},
       {QStringLiteral("language"), QString(), QStringLiteral("NAME"), QStringLiteral("en")},
       {QStringLiteral("scale"), QString(), QStringLiteral("FACTOR")},
       {QStringLiteral("size"), QString(), QStringLiteral("WIDTHxHEIGHT"), QStringLiteral("1000x800")},
       {QStringLiteral("fit"), QString()},
       {kKeep, QString(), QStringLiteral("KEPT")},
       {kAgainst, QString(), QStringLiteral("KEPT")}});
  parser.process(toolkit);
  if (parser.positionalArguments().size() != 2) parser.showHelp(2);
  tessaly::dressToolkit();
  tessaly::speak(parser.value(QStringLiteral("language")));
  tessaly::applyPalette(tessaly::paletteNamed(parser.value(QStringLiteral("palette"))));
  QApplication::setCursorFlashTime(0);
  std::optional<tessaly::ScreenFit> fit;
  if (parser.isSet(QStringLiteral("fit"))) fit.emplace();
  try {
    const QStringList places = parser.positionalArguments();
    QDir().mkpath(places[1]);
    return take(parser, places);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "no picture: %s\n", problem.what());
    return 1;
  }
}
