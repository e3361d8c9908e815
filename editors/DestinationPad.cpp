#include "editors/DestinationPad.h"

#include <algorithm>

#include <QBoxLayout>
#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>

#include "widgets/AtEach.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr int kButtonGap = 2;      // pixels between two buttons of a group
constexpr int kGroupGap = 12;      // pixels between two groups side by side
constexpr int kSectionGap = 8;     // pixels between two lines of groups
constexpr int kCaptionSpace = 12;  // pixels that a button is wider than its caption
constexpr int kHeightSpace = 6;
const QString kWidestNumber = QStringLiteral("48");
constexpr const char* kInputCorrection = "Input Correction";

// Groups of the banks that begin a line of their own.
constexpr const char* kLineStarts[] = {"Auxbuses", "Machines Serial", "eDpm Channels"};

bool startsLine(const DestinationGroup& group) {
  return std::any_of(std::begin(kLineStarts), std::end(kLineStarts),
                     [&group](const char* caption) { return group.caption == caption; });
}

// A group's buttons have one width: that of its longest caption, numbers one width everywhere.
int buttonWidth(const DestinationGroup& group, const QFontMetrics& metrics) {
  int widest = metrics.horizontalAdvance(kWidestNumber);
  for (const DestinationButton& button : group.buttons)
    widest = std::max(widest, metrics.horizontalAdvance(shown(button.caption)));
  return widest + kCaptionSpace;
}

// "ME1 Key 5", "Auxbuses 12": what the caption says beside its neighbours.
QString spokenName(const DestinationGroup& group, const DestinationButton& button) {
  QString name = shown(group.caption) + QLatin1Char(' ') + shown(button.caption);
  if (group.area == DestinationArea::kBanks) return name;
  return shown(mixEffectNames()[static_cast<std::size_t>(button.row)]) + QLatin1Char(' ') + name;
}

QString toolTipOf(const DestinationNames& destination) {
  QString tip = shown(destination.name);
  if (!destination.firstAlternative.empty()) tip += QLatin1String(", ") + shown(destination.firstAlternative);
  return tip;
}

QGridLayout* makeGrid(QWidget* parent) {
  auto* grid = new QGridLayout(parent);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(kButtonGap);
  return grid;
}

}  // namespace

DestinationPad::DestinationPad(QWidget* parent) : QWidget(parent), buttons_(new QButtonGroup(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSectionGap);
  addMixEffects(*layout);
  addBanks(*layout);
}

void DestinationPad::addMixEffects(QBoxLayout& layout) {
  auto* area = new QWidget(this);
  QGridLayout* grid = makeGrid(area);
  for (std::size_t row = 0; row < mixEffectNames().size(); ++row)
    grid->addWidget(new QLabel(shown(mixEffectNames()[row]), area), static_cast<int>(row) + 1, 0);
  int column = 1;
  for (const DestinationGroup& group : destinationGroups()) {
    if (group.area != DestinationArea::kMixEffects) continue;
    grid->setColumnMinimumWidth(column, kGroupGap - 2 * kButtonGap);
    auto* caption = new QLabel(shown(group.caption), area);
    grid->addWidget(caption, 0, column + 1, 1, group.columns());
    addButtons(group, *grid, 1, column + 1);
    column += group.columns() + 1;
  }
  grid->setColumnStretch(column, 1);
  layout.addWidget(area);
}

void DestinationPad::addBanks(QBoxLayout& layout) {
  QHBoxLayout* line = nullptr;
  for (const DestinationGroup& group : destinationGroups()) {
    if (group.area != DestinationArea::kBanks) continue;
    if (line == nullptr || startsLine(group)) {
      if (line != nullptr) line->addStretch();
      line = new QHBoxLayout;
      line->setSpacing(kGroupGap);
      layout.addLayout(line);
    }
    line->addWidget(makeBank(group));
  }
  if (line == nullptr) return;
  line->addWidget(makeCorrections());
  line->addStretch();
}

QWidget* DestinationPad::makeBank(const DestinationGroup& group) {
  auto* bank = new QWidget(this);
  QGridLayout* grid = makeGrid(bank);
  // The caption may be wider than the buttons, which stay together all the same.
  grid->addWidget(new QLabel(shown(group.caption), bank), 0, 0, 1, group.columns() + 1);
  grid->setColumnStretch(group.columns(), 1);
  bank->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  addButtons(group, *grid, 1, 0);
  return bank;
}

QWidget* DestinationPad::makeCorrections() {
  auto* bank = new QWidget(this);
  QGridLayout* grid = makeGrid(bank);
  grid->addWidget(new QLabel(QLatin1String(kInputCorrection), bank), 0, 0, 1, -1);
  int column = 0;
  for (const InputCorrection& correction : inputCorrections()) {
    const QString caption =
        QString::fromUtf8(correction.caption.data(), qsizetype(correction.caption.size()));
    QToolButton* button = makeButton(
        caption, [this, caption] { return fontMetrics().horizontalAdvance(caption) + kCaptionSpace; });
    button->setFocusPolicy(column == 0 ? Qt::StrongFocus : Qt::ClickFocus);
    button->setObjectName(caption);
    button->setToolTip(QString::fromUtf8(correction.stem.data(), qsizetype(correction.stem.size())));
    connect(button, &QToolButton::clicked, this, [this, &correction] { emit correctionPressed(correction); });
    grid->addWidget(button, 1, column++);
  }
  return bank;
}

void DestinationPad::addButtons(const DestinationGroup& group, QGridLayout& grid, int row, int column) {
  for (const DestinationButton& entry : group.buttons) {
    QToolButton* button =
        makeButton(shown(entry.caption), [this, &group] { return buttonWidth(group, fontMetrics()); });
    button->setFocusPolicy(&entry == &group.buttons.front() ? Qt::StrongFocus : Qt::ClickFocus);
    button->setObjectName(shown(entry.destination.name));
    button->setAccessibleName(spokenName(group, entry));
    button->setToolTip(toolTipOf(entry.destination));
    connect(button, &QToolButton::clicked, this, [this, &entry] { emit pressed(entry.destination); });
    grid.addWidget(button, row + entry.row, column + entry.column);
  }
}

QToolButton* DestinationPad::makeButton(const QString& caption, const std::function<int()>& width) {
  auto* button = new QToolButton(this);
  button->setText(caption);
  nowAndAtEach(QEvent::FontChange, *button, [this, button, width] {
    button->setFixedSize(width(), fontMetrics().height() + kHeightSpace);
  });
  buttons_->addButton(button);
  return button;
}

}  // namespace tessaly
