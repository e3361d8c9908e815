#include "app/Sheets.h"

#include <QDate>
#include <QPrintDialog>
#include <QPrinter>

#include "app/Checking.h"
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

Sheets::Sheets(const SiteRoot& root, const Checking& checking, ReviewPlaces& places, QWidget* window)
    : root_(root), checking_(checking), places_(places), owner_(window) {}

Sheets::~Sheets() { delete window_; }

void Sheets::show() {
  if (!window_)
    window_ = new SheetWindow({.root = root_,
                               .knowledge = [this] { return checking_.knowledge(); },
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
