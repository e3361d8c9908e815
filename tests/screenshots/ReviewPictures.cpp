#include "tests/screenshots/ReviewPictures.h"

#include <chrono>
#include <stdexcept>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTreeView>

#include "app/GuideWindow.h"
#include "app/PaneDescriptor.h"
#include "windows/CaptureModel.h"
#include "windows/CaptureWindow.h"
#include "windows/CheckWindow.h"
#include "windows/ReplaceWindow.h"
#include "windows/SearchWindow.h"
#include "windows/SheetPreview.h"
#include "windows/SheetWindow.h"
#include "windows/WorkplacesWindow.h"

namespace tessaly {

namespace {

constexpr std::chrono::year_month_day kDay{std::chrono::year(2026), std::chrono::November,
                                           std::chrono::day(25)};

constexpr int kFade =
    500;  // milliseconds that the sign which empties a field takes to come, whatever the style says

template <class Widget>
Widget& part(const QWidget& window, const char* name) {
  auto* const found = window.findChild<Widget*>(QLatin1String(name));
  if (found == nullptr) throw std::runtime_error(std::string("no ") + name);
  return *found;
}

bool told(const QAbstractItemModel& rows, int column) {
  for (int row = 0; row < rows.rowCount(); ++row)
    if (rows.index(row, column).data().toString().isEmpty()) return false;
  return rows.rowCount() > 0;
}

class ReviewPictures {
 public:
  ReviewPictures(MainWindow& window, const WindowDriver& user, const WindowContext& context,
                 const SavePicture& save)
      : window_(window), user_(user), context_(context), save_(save) {}

  void take() const {
    goTo(Pane::kA);
    takeCheck();
    takeSearch();
    takeReplacement();
    takeWorkplaces();
    takeSheet();
    takeGuide();
    goTo(Pane::kB);
    takeCapture();
  }

 private:
  template <class Window>
  Window& opened(const char* act) const {
    QApplication::setActiveWindow(&window_);
    window_.findChild<QAction*>(QLatin1String(act))->trigger();
    auto* const found = window_.findChild<Window*>();
    if (found == nullptr) throw std::runtime_error(std::string("no window for ") + act);
    return *found;
  }

  void awaitEnd(const QWidget& window) const {
    const auto& progress = part<QProgressBar>(window, "progress");
    WindowDriver::waitFor([&] { return !progress.isVisible(); }, "the end of the work");
  }

  void close(QWidget& window, const char* name) const {
    save_(window, name);
    window.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void goTo(Pane pane) const {
    QApplication::setActiveWindow(&window_);
    user_.list(kPaneDescriptors[index(pane)].ids.commands).setFocus();
    QApplication::processEvents();
  }

  void takeCheck() const {
    auto& check = opened<CheckWindow>("check");
    WindowDriver::waitFor([&] { return part<QTreeView>(check, "findings").model()->rowCount() > 2; },
                          "the findings");
    awaitEnd(check);
    close(check, "check.png");
  }

  void takeSearch() const {
    auto& search = opened<SearchWindow>("search");
    search.search(QStringLiteral("function:CLIP value:>40"), ReviewScope::Kind::kFolder);
    WindowDriver::waitFor([&] { return !part<QLabel>(search, "outcome").text().isEmpty(); }, "the hits");
    awaitEnd(search);
    QTest::qWait(kFade);
    close(search, "search.png");
  }

  void takeReplacement() const {
    auto& replace = opened<ReplaceWindow>("replace");
    QTest::keyClicks(&part<QLineEdit>(replace, "rule"), QStringLiteral("destination:QMF1->QMF4"));
    QTest::keyClick(&part<QLineEdit>(replace, "rule"), Qt::Key_Return);
    const auto& write = part<QPushButton>(replace, "replace");
    WindowDriver::waitFor([&] { return write.isEnabled(); }, "the preview");
    awaitEnd(replace);
    close(replace, "replace.png");
  }

  void takeCapture() const {
    auto& capture = opened<CaptureWindow>("capture");
    const QAbstractItemModel& values = *part<QTreeView>(capture, "values").model();
    WindowDriver::waitFor([&] { return told(values, CaptureModel::kNew); }, "the panel's values");
    close(capture, "capture.png");
  }

  void takeWorkplaces() const {
    auto& workplaces = opened<WorkplacesWindow>("workplacesBeside");
    WindowDriver::waitFor([&] { return !workplaces.busy(); }, "the workplaces");
    close(workplaces, "workplaces.png");
  }

  // With a date of its own, which is printed.
  void takeSheet() const {
    const auto folder = [] {
      return std::vector<ReviewScope>{{ReviewScope::Kind::kFolder, QStringLiteral("Evening News"),
                                       FolderContent{"c:\\programme\\rv48\\appli\\Evening News\\CP1\\"}}};
    };
    SheetWindow sheet({context_.site.root,
                       [this] {
                         return CheckContext{context_.dictionary, context_.decodingLists};
                       },
                       folder, [](const Failure&) { return QString(); }, [] { return kDay; },
                       [](QPrinter&, int, QWidget*) { return false; }});
    sheet.show();
    sheet.make(ReviewScope::Kind::kFolder);
    const auto& preview = *sheet.findChild<SheetPreview*>();
    WindowDriver::waitFor([&] { return preview.pageCount() > 0; }, "the pages");
    save_(sheet, "sheet.png");
  }

  void takeGuide() const {
    openGuide(window_, QStringLiteral("guide.html"));
    auto* const guide = window_.findChild<GuideWindow*>();
    if (guide == nullptr) throw std::runtime_error("no guide");
    close(*guide, "guide.png");
  }

  MainWindow& window_;
  const WindowDriver& user_;
  const WindowContext& context_;
  const SavePicture& save_;
};

}  // namespace

void takeReviews(MainWindow& window, const WindowDriver& user, const WindowContext& context,
                 const SavePicture& save) {
  ReviewPictures(window, user, context, save).take();
}

}  // namespace tessaly
