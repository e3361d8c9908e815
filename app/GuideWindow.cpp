#include "app/GuideWindow.h"

#include <algorithm>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPointer>
#include <QShortcut>

#include "ui_GuideWindow.h"
#include "widgets/AtEach.h"
#include "widgets/ButtonIcon.h"

static void initGuide() { Q_INIT_RESOURCE(guide); }

namespace tessaly {

namespace {

const QString kPages = QStringLiteral("qrc:/guide/");

}  // namespace

GuideWindow::GuideWindow(QWidget* owner)
    : QWidget(owner, Qt::Window), ui_(std::make_unique<Ui::GuideWindow>()) {
  initGuide();
  ui_->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  QTextBrowser* const pages = ui_->pages;
  connect(pages, &QTextBrowser::anchorClicked, this, &GuideWindow::follow);
  connect(pages, &QTextBrowser::backwardAvailable, ui_->back, &QWidget::setEnabled);
  connect(pages, &QTextBrowser::forwardAvailable, ui_->forward, &QWidget::setEnabled);
  connect(ui_->back, &QAbstractButton::clicked, pages, &QTextBrowser::backward);
  connect(ui_->forward, &QAbstractButton::clicked, pages, &QTextBrowser::forward);
  connect(ui_->contents, &QAbstractButton::clicked, this,
          [this] { follow(QUrl(kPages + QLatin1String("guide.html"))); });
  connect(ui_->keys, &QAbstractButton::clicked, this,
          [this] { follow(QUrl(kPages + QLatin1String("keys.html"))); });
  connect(ui_->words, &QLineEdit::returnPressed, this, [this] { find(false); });
  connect(ui_->next, &QAbstractButton::clicked, this, [this] { find(false); });
  connect(ui_->before, &QAbstractButton::clicked, this, [this] { find(true); });
  new QShortcut(QKeySequence::Find, ui_->words, [this] {
    ui_->words->setFocus();
    ui_->words->selectAll();
  });
  setIcons({{ui_->back, ButtonIcon::kLeft},
            {ui_->forward, ButtonIcon::kRight},
            {ui_->contents, ButtonIcon::kContents},
            {ui_->keys, ButtonIcon::kKeys},
            {ui_->before, ButtonIcon::kUp},
            {ui_->next, ButtonIcon::kDown}});
  pages->document()->setResourceProvider([this](const QUrl& link) { return picture(link); });
  // Links have the colour that they were read in.
  nowAndAtEach(QEvent::PaletteChange, *pages, [pages] { pages->reload(); });
  new QShortcut(Qt::Key_Escape, this, [this] { close(); });
  new QShortcut(QKeySequence::Close, this, [this] { close(); });
}

GuideWindow::~GuideWindow() = default;

void GuideWindow::show(const QString& place) {
  QWidget::show();
  follow(QUrl(kPages + place));
  raise();
  activateWindow();
  ui_->pages->setFocus();
}

// No wider than the page when it is opened.
QVariant GuideWindow::picture(const QUrl& link) const {
  QImage picture(QLatin1Char(':') + ui_->pages->source().resolved(link).path());
  if (picture.isNull()) return {};
  const int page =
      ui_->pages->viewport()->width() - 2 * static_cast<int>(ui_->pages->document()->documentMargin());
  if (picture.width() <= page) return picture;
  const double screen = devicePixelRatioF();
  picture = picture.scaledToWidth(std::min(picture.width(), qRound(page * screen)), Qt::SmoothTransformation);
  picture.setDevicePixelRatio(static_cast<double>(picture.width()) / page);
  return picture;
}

// What lies outside is named, for a browser, and never fetched.
void GuideWindow::follow(const QUrl& link) {
  const bool ours = link.scheme() == QLatin1String("qrc") && QFile::exists(QLatin1Char(':') + link.path());
  ui_->told->setText(ours ? QString() : tr("not in this guide: %1").arg(link.toDisplayString()));
  if (ours) ui_->pages->setSource(link);
}

// On from what was found last, past the end to the beginning.
void GuideWindow::find(bool backwards) {
  const QString words = ui_->words->text();
  if (words.isEmpty()) return;
  const auto flags = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  bool found = ui_->pages->find(words, flags);
  if (!found) {
    const QTextCursor before = ui_->pages->textCursor();
    ui_->pages->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    found = ui_->pages->find(words, flags);
    if (!found) ui_->pages->setTextCursor(before);
  }
  ui_->told->setText(found ? QString() : tr("\"%1\" is not in this page").arg(words));
}

void openGuide(QWidget& window, const QString& place) {
  static QPointer<GuideWindow> guide;
  QWidget* const holding = QApplication::activeModalWidget();
  QWidget* const owner = holding != nullptr ? holding : &window;
  if (guide != nullptr && guide->parentWidget() != owner) delete guide;
  if (guide == nullptr) guide = new GuideWindow(owner);
  guide->show(place);
}

}  // namespace tessaly
