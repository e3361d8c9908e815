#include "bench/window/Desk.h"

#include <cstdlib>

#include <QTimer>

#include "app/Appearance.h"
#include "dictionary/InterfaceFile.h"
#include "model/MacroFile.h"
#include "widgets/QuietToolkit.h"

namespace tessaly::bench {

namespace {

// Tells when a list has been painted with the rows that it has now.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QAbstractItemView& list) {
    list.viewport()->installEventFilter(this);
    const auto changed = [this] { painted_ = false; };
    connect(list.model(), &QAbstractItemModel::modelReset, this, changed);
    connect(list.model(), &QAbstractItemModel::layoutChanged, this, changed);
    connect(list.model(), &QAbstractItemModel::dataChanged, this, changed);
  }
  [[nodiscard]] bool painted() const { return painted_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted_ = true;
    return QObject::eventFilter(watched, event);
  }

 private:
  bool painted_ = false;
};

}  // namespace

QApplication& toolkit() {
  static int count = 1;
  static char name[] = "tessaly-bench";
  static char* arguments[] = {name, nullptr};
  static QApplication* application = [] {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    quietToolkit();
    auto* made = new QApplication(count, arguments);
    dressToolkit();
    applyPalette(PaletteChoice::kDesktop);
    return made;
  }();
  return *application;
}

Desk::Desk(SiteRoot root, std::uint16_t ftpPort)
    : root_(std::move(root)),
      dictionary_(std::make_unique<FunctionDictionary>()),
      lists_(root_),
      history_(root_),
      macros_(client_, root_, ftpTransfers(ftpPort), &readsAsMacro) {
  toolkit();
  macros_.keepIn(history_);
  loadFunctionDictionary(root_, *dictionary_,
                         [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); });
  stalls_ = std::make_unique<StallWatch>();
  window_ =
      std::make_unique<MainWindow>(WindowContext{access(), *dictionary_, lists_, client_, macros_, history_});
  window_->show();
  QCoreApplication::postEvent(window_.get(), new QEvent(static_cast<QEvent::Type>(kDictionaryLoadedMessage)));
  user_ = std::make_unique<WindowDriver>(*window_);
  user_->waitUntilLoaded();
}

Desk::~Desk() = default;

void Desk::act(const std::function<void()>& action, int paintedList, const std::function<bool()>& done) {
  act(
      action, [&] { return &user_->list(paintedList); }, done);
}

void Desk::act(const std::function<void()>& action, const std::function<QAbstractItemView*()>& painted,
               const std::function<bool()>& done) {
  std::unique_ptr<PaintWatch> paint;
  bool acted = false, over = false;
  const auto watch = [&] {
    if (QAbstractItemView* list = paint ? nullptr : painted()) paint = std::make_unique<PaintWatch>(*list);
  };
  watch();
  QTimer::singleShot(0, window_.get(), [&] {
    action();
    acted = true;
  });
  while (!over || !paint->painted()) {
    stalls_->turn();
    watch();
    if (!over && acted && paint && done()) {
      over = true;
      if (!paint->painted()) painted()->viewport()->update();
    }
  }
}

double Desk::takeLongestStretch() {
  const double longest = stalls_->longest();
  stalls_->reset();
  return longest;
}

}  // namespace tessaly::bench
