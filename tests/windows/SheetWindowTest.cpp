// Macros on paper in their window: pages, choices, files and the printer.
#include <cmath>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrinter>
#include <QScrollBar>
#include <QTimer>
#include <QTranslator>

#include "tests/windows/ReviewFixture.h"
#include "windows/SheetJob.h"
#include "windows/SheetPreview.h"
#include "windows/SheetWindow.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::chrono::year_month_day kDay{2026y, std::chrono::November, 25d};

std::string macroWith(int commands) {
  std::string text;
  for (int i = 0; i < commands; ++i) text += R"(<cmd fid="QMF1.NO.SUCH" workplace="1"/>)";
  return macroOf("Opening", text);
}

struct SheetWindowTest : ReviewFixture {
  SheetWindowTest() {
    site.write("c:\\m\\macroWP1\\macro001.mac", macroWith(200));
    site.write("c:\\m\\macroWP1\\macro002.mac", "no macro");
    scopes = {{ReviewScope::Kind::kFolder, "workplace: c:\\m\\macroWP1", FolderContent{"c:\\m\\macroWP1"}},
              panel<StuckShelf>()};
    window.present();
    QApplication::setActiveWindow(&window);
  }
  QWidget& top() override { return window; }
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

  const FunctionDictionary none;
  std::string asked;
  std::function<bool(QPrinter& printer, int pages)> setUp;
  SheetWindow window{{site.root,
                      [this] {
                        return CheckContext{none, lists};
                      },
                      [this] { return scopes; }, words, [] { return kDay; },
                      [this](QPrinter& printer, int pages, QWidget*) { return setUp(printer, pages); }}};
  SheetPreview& preview = child<SheetPreview>("preview");
};

TEST_F(SheetWindowTest, ShowsThePagesAndFollowsChoicesZoomAndKeys) {
  EXPECT_EQ(shutIn(window), "print write; cancel progress");
  EXPECT_EQ(said("page"), "");
  window.make(ReviewScope::Kind::kFolder);
  EXPECT_EQ(shutIn(window), "print write; ");
  awaitEnd();
  EXPECT_EQ(shutIn(window), "; cancel progress");
  EXPECT_EQ(said("outcome"), "1 macros could not be read; the sheet says why.");
  const int pages = preview.pageCount();
  auto& bar = *preview.verticalScrollBar();
  const auto page = [&](int number) {
    return "page " + std::to_string(number) + " of " + std::to_string(pages);
  };
  EXPECT_EQ(said("page"), page(1));
  // A page is told once more of it is seen than of the one before, and the last one has the gap below it.
  const int stride = (bar.maximum() + preview.viewport()->height() - 12) / pages;
  for (const int middle : {stride - 2, stride + 2}) {
    bar.setValue(middle - preview.viewport()->height() / 2);
    EXPECT_EQ(said("page"), page(middle < stride ? 1 : 2));
  }
  QTest::keyClick(&preview, Qt::Key_End);
  EXPECT_EQ(bar.value(), bar.maximum());
  EXPECT_EQ(said("page"), page(pages));
  EXPECT_EQ(preview.accessibleDescription().toStdString(), said("page"));
  tick("findings");
  awaitEnd();
  EXPECT_LT(preview.pageCount(), pages) << "every command has a finding";
  EXPECT_EQ(preview.page() + 1, preview.pageCount()) << "as near as there is one";
  const int before = preview.verticalScrollBar()->maximum();
  QWheelEvent wheel({50, 50}, preview.viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(preview.viewport(), &wheel);
  EXPECT_GT(preview.verticalScrollBar()->maximum(), before);
  auto& zoom = child<QComboBox>("zoom");
  EXPECT_THAT(zoom.placeholderText().toStdString(), HasSubstr("%"));
  EXPECT_EQ(zoom.currentIndex(), -1);
  EXPECT_THAT(column(*zoom.model(), 0),
              ElementsAre("Width of the window", "50 %", "75 %", "100 %", "125 %", "150 %", "200 %"));
  // Keys and wheel change by one step, between a quarter and four times the size.
  const auto wide = [&] {
    return preview.horizontalScrollBar()->maximum() + preview.viewport()->width() - 24;
  };
  const double inch = preview.logicalDpiX() / 72.0;
  zoom.setFocus();
  for (const Qt::Key key : {Qt::Key_End, Qt::Key_Up}) QTest::keyClick(&zoom, key);
  EXPECT_EQ(wide(), std::ceil(595.28 * 1.5 * inch));
  QTest::keyClick(&preview, Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_EQ(zoom.placeholderText(), "173 %");
  EXPECT_EQ(wide(), std::ceil(595.28 * 1.725 * inch));
  QTest::keyClick(&preview, Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(zoom.placeholderText(), "150 %");
  for (const auto& [key, told] : {std::pair{Qt::Key_Equal, "400 %"}, {Qt::Key_Minus, "25 %"}}) {
    for (int i = 0; i < 25; ++i) QTest::keyClick(&preview, key, Qt::ControlModifier);
    EXPECT_EQ(zoom.placeholderText(), told);
  }
  EXPECT_EQ(preview.horizontalScrollBar()->maximum(), 0);
  EXPECT_THAT(column(*child<QComboBox>("paper").model(), 0), ElementsAre("A4", "A5", "Letter"));
  const int few = preview.pageCount();
  QTest::keyClick(&child<QComboBox>("paper"), Qt::Key_Down);
  awaitEnd();
  EXPECT_GT(preview.pageCount(), few);
}

// The words of the program's language, not those that the command line has.
TEST(SheetJob, HasAWordOfTheLanguageForEach) {
  struct Shouting : QTranslator {
    QString translate(const char*, const char* text, const char*, int) const override {
      return QString(text).toUpper();
    }
    bool isEmpty() const override { return false; }
  } shouting;
  QCoreApplication::installTranslator(&shouting);
  const SheetWords loud = sheetWords(), plain;
  QCoreApplication::removeTranslator(&shouting);
  using Word = std::string SheetWords::*;
  for (const Word word :
       {&SheetWords::language,   &SheetWords::macros,    &SheetWords::number,  &SheetWords::name,
        &SheetWords::pageColumn, &SheetWords::command,   &SheetWords::value,   &SheetWords::empty,
        &SheetWords::none,       &SheetWords::unread,    &SheetWords::unsaved, &SheetWords::findings,
        &SheetWords::after,      &SheetWords::notes,     &SheetWords::nothing, &SheetWords::unknown,
        &SheetWords::untold,     &SheetWords::continued, &SheetWords::page,    &SheetWords::changed})
    EXPECT_EQ(loud.*word, QString::fromStdString(plain.*word).toUpper().toStdString());
}

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
  EXPECT_TRUE(enabled("print"));
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
    EXPECT_EQ(printer.docName(), "c:\\m\\macroWP1");
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
