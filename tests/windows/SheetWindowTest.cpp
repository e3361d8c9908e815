// Macros on paper in their window: pages, choices, files and the printer.
#include <condition_variable>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "tests/support/TestSite.h"
#include "windows/SheetPreview.h"
#include "windows/SheetWindow.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::chrono::year_month_day kDay{2026y, std::chrono::November, 25d};

std::string macroOf(int commands) {
  std::string text = "<macro name=\"Opening\"><data>";
  for (int i = 0; i < commands; ++i) text += R"(<cmd fid="QMF1.NO.SUCH" workplace="1"/>)";
  return text + "</data></macro>";
}

// One that gives nothing until it is cancelled.
class StuckShelf : public MacroShelf {
 public:
  [[nodiscard]] std::string title() const override { return "workplace 1 of 127.0.0.1"; }
  [[nodiscard]] MacroPlace place(MacroNumber number) const override {
    return {{}, "127.0.0.1", 1, number.text()};
  }
  [[nodiscard]] Expected<std::vector<Held>> list() override {
    std::unique_lock lock(mutex_);
    cancelled_.wait(lock, [this] { return stop_; });
    return Failure{Failure::Kind::kCancelled, "cancelled"};
  }
  [[nodiscard]] Expected<std::string> read(MacroNumber) override { return std::string(); }
  [[nodiscard]] Outcome writable() const override { return {}; }
  [[nodiscard]] ShelfWrite write(MacroNumber, std::string_view, MacroChange, const BeforeWrite&) override {
    return {};
  }
  [[nodiscard]] ShelfWrite remove(MacroNumber, const BeforeWrite&) override { return {}; }
  void cancel() override {
    const std::lock_guard guard(mutex_);
    stop_ = true;
    cancelled_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable cancelled_;
  bool stop_ = false;
};

struct SheetWindowTest : testing::Test {
  SheetWindowTest() {
    site.write("c:\\m\\macroWP1\\macro001.mac", macroOf(200));
    site.write("c:\\m\\macroWP1\\macro002.mac", "no macro");
    window.present();
    QApplication::setActiveWindow(&window);
  }
  template <class Widget>
  [[nodiscard]] Widget& child(const char* name) {
    return *window.findChild<Widget*>(QLatin1String(name));
  }
  [[nodiscard]] std::string said(const char* label) { return child<QLabel>(label).text().toStdString(); }
  [[nodiscard]] bool idle() { return !child<QWidget>("cancel").isVisible(); }
  void awaitEnd() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return idle(); }));
  }
  void click(const char* button) { QTest::mouseClick(&child<QPushButton>(button), Qt::LeftButton); }
  // Writes to that file through the dialog; what is asked there is answered so.
  void exportTo(const std::string& name, QMessageBox::StandardButton answer = QMessageBox::NoButton) {
    bool typed = false;
    QObject life;  // of the answers
    // A timer does not go off within its own answer, in which a box may be open: each answer has a new one.
    std::function<void()> hand = [&] {
      QTimer::singleShot(20, &life, hand);
      QWidget* modal = QApplication::activeModalWidget();
      if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        asked = box->text().toStdString();
        QTest::mouseClick(box->button(answer), Qt::LeftButton);
      } else if (modal != nullptr && modal->isVisible()) {
        auto* field = modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (std::exchange(typed, true)) return QTest::keyClick(modal, Qt::Key_Escape);
        field->setText(QString::fromStdString(site.root.resolve("c:\\" + name).string()));
        QTest::keyClick(field, Qt::Key_Return);
      }
    };
    QTimer::singleShot(0, &life, hand);
    click("write");
    awaitEnd();
  }

  TestSite site;
  FunctionDictionary dictionary;
  DecodingLists lists{site.root};
  std::vector<ReviewScope> scopes{
      {ReviewScope::Kind::kFolder, "workplace: c:\\m\\macroWP1", FolderContent{"c:\\m\\macroWP1"}},
      {ReviewScope::Kind::kPanel, "the panel", ShelfContent{[] { return std::make_shared<StuckShelf>(); }}}};
  std::string asked;
  std::function<bool(QPrinter& printer, int pages)> setUp;
  SheetWindow window{{site.root,
                      [this] {
                        return CheckContext{dictionary, lists};
                      },
                      [this] { return scopes; },
                      [](const Failure& failure) { return QString::fromStdString(failure.text); },
                      [] { return kDay; },
                      [this](QPrinter& printer, int pages, QWidget*) { return setUp(printer, pages); }}};
  SheetPreview& preview = child<SheetPreview>("preview");
};

TEST_F(SheetWindowTest, ShowsThePagesAndFollowsChoicesZoomAndKeys) {
  window.make(ReviewScope::Kind::kFolder);
  EXPECT_FALSE(child<QPushButton>("write").isEnabled()) << "nothing to write yet";
  awaitEnd();
  EXPECT_THAT(said("outcome"), StartsWith("1 macro"));
  const int pages = preview.pageCount();
  EXPECT_EQ(said("page"), "page 1 of " + std::to_string(pages));
  QTest::keyClick(&preview, Qt::Key_End);
  EXPECT_EQ(said("page"), "page " + std::to_string(pages) + " of " + std::to_string(pages));
  EXPECT_EQ(preview.accessibleDescription().toStdString(), said("page"));
  QTest::keyClick(&child<QCheckBox>("findings"), Qt::Key_Space);
  awaitEnd();
  EXPECT_LT(preview.pageCount(), pages) << "every command has a finding";
  // The letters are there, black on white, wherever the theme's colours are.
  QTest::keyClick(&preview, Qt::Key_Home);
  const QImage image = preview.viewport()->grab().toImage();
  int dark = 0, white = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) {
      dark += image.pixelColor(x, y).lightness() < 100;
      white += image.pixelColor(x, y) == Qt::white;
    }
  EXPECT_GT(dark, 300);
  EXPECT_GT(white, image.width() * image.height() / 2);
  const int before = preview.verticalScrollBar()->maximum();
  QWheelEvent wheel({50, 50}, preview.viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(preview.viewport(), &wheel);
  EXPECT_GT(preview.verticalScrollBar()->maximum(), before);
  EXPECT_THAT(child<QComboBox>("zoom").placeholderText().toStdString(), HasSubstr("%"));
}

// A panel that does not answer: the sheet that was there stays, and the window is free.
TEST_F(SheetWindowTest, CancelLeavesTheSheetOfBefore) {
  window.make(ReviewScope::Kind::kFolder);
  awaitEnd();
  const int pages = preview.pageCount();
  window.make(ReviewScope::Kind::kPanel);
  EXPECT_FALSE(idle());
  window.writeWhenMade();
  bool offered = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&offered] {
    QWidget* const modal = QApplication::activeModalWidget();
    offered = offered || modal != nullptr;
    if (modal != nullptr) modal->close();
  });
  watch.start(1);
  QTest::keyClick(&child<QCheckBox>("findings"), Qt::Key_Space);
  click("cancel");
  awaitEnd();
  EXPECT_EQ(said("outcome"), "Cancelled: the panel");
  ASSERT_TRUE(QTest::qWaitFor([&] { return preview.pageCount() < pages && idle(); }))
      << "with the choices that were made meanwhile";
  EXPECT_FALSE(offered) << "what was to be written has not come";
  EXPECT_TRUE(child<QPushButton>("print").isEnabled());
}

TEST_F(SheetWindowTest, ExportsByTheEndingAndAsksBeforeItWritesOver) {
  window.make(ReviewScope::Kind::kFolder);
  awaitEnd();
  exportTo("a.csv");
  EXPECT_THAT(site.read("c:\\a.csv"), StartsWith("place,number,name"));
  exportTo("a.HTML");
  EXPECT_THAT(site.read("c:\\a.HTML"), StartsWith("<!DOCTYPE html>"));
  exportTo("b");
  EXPECT_THAT(site.read("c:\\b.pdf"), StartsWith("%PDF"));
  EXPECT_THAT(said("outcome"), AllOf(StartsWith("written: "), HasSubstr("b.pdf")));
  site.write("c:\\b.pdf", "mine");
  exportTo("b.pdf", QMessageBox::No);
  EXPECT_THAT(asked, HasSubstr("b.pdf"));
  EXPECT_EQ(site.read("c:\\b.pdf"), "mine");
  exportTo("b.pdf", QMessageBox::Yes);
  EXPECT_THAT(site.read("c:\\b.pdf"), StartsWith("%PDF"));
  exportTo("c.doc");
  EXPECT_THAT(said("outcome"), AllOf(StartsWith("NOT written"), HasSubstr("c.doc")));
}

TEST_F(SheetWindowTest, PrintsThePagesThatThePrinterIsSetTo) {
  window.make(ReviewScope::Kind::kFolder);
  awaitEnd();
  const std::string file = site.root.resolve("c:\\printed.pdf").string();
  int offered = 0;
  setUp = [&](QPrinter& printer, int pages) {
    offered = pages;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(file));
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 3);
    return true;
  };
  QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
  awaitEnd();
  EXPECT_EQ(offered, preview.pageCount());
  EXPECT_THAT(said("outcome"), StartsWith("printed: "));
  const std::string text = [&] {
    const std::string command = "pdftotext -layout '" + file + "' '" + file + ".txt'";
    return std::system(command.c_str()) == 0 ? site.read("c:\\printed.pdf.txt") : std::string();
  }();
  EXPECT_THAT(text, AllOf(HasSubstr("page 2 of"), HasSubstr("page 3 of"), HasSubstr("001 - Opening"),
                          Not(HasSubstr("page 1 of")), Not(HasSubstr("page 4 of"))));
  setUp = [](QPrinter&, int) { return false; };
  click("print");
  EXPECT_TRUE(idle());
}

}  // namespace
}  // namespace tessaly
