// A key in a search field of the creation dialog, until the rows that it finds are laid out.
#include <cstring>

#include <QImage>
#include <QLineEdit>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "bench/window/Desk.h"
#include "dictionary/InterfaceFile.h"
#include "editors/CreateCommandDialog.h"

namespace tessaly::bench::keystroke_rows {
namespace {

constexpr std::size_t kFunctions = 100'000;
constexpr std::size_t kBytesPerFunction = 52;  // of the file
constexpr const char* kTyped = "wipe168";

// A person looks at the dialog before the first key, and what painted it has gone to sleep.
constexpr int kPause = 300;  // milliseconds

// The toolkit paints what is large on threads, which the main window has started long before a dialog is
// opened.
void startPaintingThreads() {
  constexpr int kLarge = 2000;  // pixels
  QImage image(kLarge, kLarge, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  image = image.scaled(kLarge / 2, kLarge / 2, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  keep(&image);
}

struct Search {
  SiteRoot root = siteWithInterface(kFunctions, kFunctions* kBytesPerFunction);
  Agreeing messages;
  FunctionDictionary dictionary;
  DecodingLists lists{root};
  PanelClient client;
  std::vector<PanelSource> sources;
  int frameRate = 25;
  EditorContext context{{root, messages}, dictionary,           lists,    sources,
                        client,           [] { return false; }, frameRate};
  std::unique_ptr<CreateCommandDialog> dialog;
  QLineEdit* field = nullptr;

  Search() {
    toolkit();
    startPaintingThreads();
    if (!readInterfaceFile(root, "c:\\ifc.xml", FunctionSource::kPanel, dictionary,
                           [](const std::string&) {}))
      std::abort();
    dictionary.finish();
    dialog = std::make_unique<CreateCommandDialog>(context, 1, true);
    dialog->show();
    field = dialog->findChild<QLineEdit*>(QStringLiteral("search1"));
    field->setFocus();
    QApplication::processEvents();
  }
};

Search& search() {
  static auto* made = new Search;
  return *made;
}

void layOutRows() {
  for (auto* list : search().dialog->findChildren<QListView*>()) list->doItemsLayout();
}

void typeKeys() {
  for (const char* key = kTyped; *key != '\0'; ++key) {
    QTest::keyClick(search().field, *key);
    layOutRows();
  }
}

void clear() {
  search().field->clear();
  QApplication::processEvents();
}

void passes() {
  const std::string_view names = search().dictionary.allNames();
  for (std::size_t key = 0; key < std::strlen(kTyped); ++key) {
    const char* place = names.data();
    const char* end = place + names.size();
    std::size_t hits = 0;
    while (const void* hit = memmem(place, static_cast<std::size_t>(end - place), "Wipe168", key + 1)) {
      ++hits;
      place = static_cast<const char*>(hit) + key + 1;
    }
    keep(&hits);
  }
}

const bool kRegistered[] = {
    addPair({.name = "a key in the creation dialog until rows are laid out, 100,000 functions",
             .measured = typeKeys,
             .limit = passes,
             .goal = 4,
             .prepare = [] { search(); },
             .reset = clear}),
    addFigure({.name = "the same: a key in the creation dialog",
               .unit = kSeconds,
               .take =
                   [] {
                     clear();
                     QTest::qWait(kPause);
                     double longest = 0;
                     for (const char* key = kTyped; *key != '\0'; ++key) {
                       const char pressed = *key;
                       const auto start = std::chrono::steady_clock::now();
                       QTest::keyClick(search().field, pressed);
                       QApplication::processEvents();
                       longest = std::max(
                           longest,
                           std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
                     }
                     return Figures{longest, 0.05};
                   }}),
};

}  // namespace
}  // namespace tessaly::bench::keystroke_rows
