#include "app/Sheets.h"

#include <QDate>
#include <QPrintDialog>
#include <QPrinter>

#include "app/FailureText.h"
#include "app/ReviewPlaces.h"
#include "windows/SheetWindow.h"

namespace tessaly {

namespace {

std::chrono::year_month_day today() {
  const QDate date = QDate::currentDate();
  return {std::chrono::year(date.year()), std::chrono::month(static_cast<unsigned>(date.month())),
          std::chrono::day(static_cast<unsigned>(date.day()))};
}

bool setUpPrinter(QPrinter& printer, int pages, QWidget* over) {
  QPrintDialog dialog(&printer, over);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange);
  dialog.setMinMax(1, pages);
  dialog.setFromTo(1, pages);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace

Sheets::Sheets(SiteAccess site, const LineContext& knowledge, const int& frameRate, ReviewPlaces& places,
               QWidget* window)
    : site_(site), knowledge_(knowledge), frameRate_(frameRate), places_(places), owner_(window) {}

Sheets::~Sheets() { delete window_; }

CheckContext Sheets::context() const {
  std::vector<std::string> problems;  // told by the list of the check
  return {knowledge_.dictionary, knowledge_.decodingLists, frameRate_, RulesOff::load(site_.root, problems)};
}

void Sheets::show() {
  if (!window_)
    window_ = new SheetWindow({.root = site_.root,
                               .knowledge = [this] { return context(); },
                               .scopes = [this] { return places_.scopes(); },
                               .failureText = &failureText,
                               .today = &today,
                               .setUp = &setUpPrinter},
                              owner_);
  window_->make(ReviewScope::Kind::kPane);
  window_->present();
}

void Sheets::print() { show(); }

void Sheets::write() {
  show();
  window_->writeWhenMade();
}

}  // namespace tessaly
