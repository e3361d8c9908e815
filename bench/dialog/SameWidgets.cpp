#include "bench/dialog/SameWidgets.h"

#include <vector>

#include <QCheckBox>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStringListModel>
#include <QToolButton>

#include "bench/start/WidgetList.h"

namespace tessaly::bench {

namespace {

template <class Widget>
QWidget* written(const QString& text, QWidget* parent) {
  return new Widget(text, parent);
}

template <class Widget>
QWidget* plain(const QString&, QWidget* parent) {
  return new Widget(parent);
}

QWidget* list(const QString& rows, QWidget* parent) {
  auto* made = new QListView(parent);
  made->setUniformItemSizes(true);
  made->setModel(new QStringListModel(rows.split(kRowEnd, Qt::SkipEmptyParts), made));
  return made;
}

QWidget* make(const QString& kind, const QString& text, QWidget* parent) {
  static const QHash<QString, QWidget* (*)(const QString&, QWidget*)> kinds{
      {QStringLiteral("QCheckBox"), written<QCheckBox>},
      {QStringLiteral("QFrame"), plain<QFrame>},
      {QStringLiteral("QGroupBox"), written<QGroupBox>},
      {QStringLiteral("QLabel"), written<QLabel>},
      {QStringLiteral("QLineEdit"), written<QLineEdit>},
      {QStringLiteral("QListView"), list},
      {QStringLiteral("QMainWindow"), plain<QMainWindow>},
      {QStringLiteral("QMenu"), written<QMenu>},
      {QStringLiteral("QMenuBar"), plain<QMenuBar>},
      {QStringLiteral("QPushButton"), written<QPushButton>},
      {QStringLiteral("QRadioButton"), written<QRadioButton>},
      {QStringLiteral("QScrollArea"), plain<QScrollArea>},
      {QStringLiteral("QSplitter"), plain<QSplitter>},
      {QStringLiteral("QToolButton"), plain<QToolButton>},
      {QStringLiteral("QWidget"), plain<QWidget>},
  };
  const auto maker = kinds.value(kind);
  if (maker == nullptr) qFatal("no way to make a %s", qPrintable(kind));
  return maker(text, parent);
}

void place(QWidget& parent, QWidget* child, const QStringList& line) {
  if (auto* window = qobject_cast<QMainWindow*>(&parent)) {
    if (auto* bar = qobject_cast<QMenuBar*>(child))
      window->setMenuBar(bar);
    else if (window->centralWidget() == nullptr)  // the others lie over it
      window->setCentralWidget(child);
  } else if (auto* bar = qobject_cast<QMenuBar*>(&parent)) {
    bar->addMenu(qobject_cast<QMenu*>(child));
  } else if (auto* splitter = qobject_cast<QSplitter*>(&parent)) {
    splitter->addWidget(child);
  } else if (auto* area = qobject_cast<QScrollArea*>(&parent)) {
    area->setWidget(child);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // which the window does without
  } else {
    if (parent.layout() == nullptr) (new QGridLayout(&parent))->setContentsMargins({});
    static_cast<QGridLayout*>(parent.layout())
        ->addWidget(child, line[3].toInt(), line[4].toInt(), line[5].toInt(), line[6].toInt());
  }
}

}  // namespace

QWidget* sameWidgets(const char* path) {
  QFile file(QString::fromLocal8Bit(path));
  if (!file.open(QIODevice::ReadOnly)) qFatal("cannot read %s", path);
  std::vector<QWidget*> made;
  for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
    const QStringList parts = line.split(u'\t');
    QWidget* parent = made.empty() ? nullptr : made[static_cast<std::size_t>(parts[0].toInt())];
    QWidget* widget = made.emplace_back(make(parts[1], parts[7], parent));
    if (parent == nullptr) {
      widget->setFixedSize(parts[6].toInt(), parts[5].toInt());
    } else {
      place(*parent, widget, parts);
      if (parts[2] == u'0' && !widget->isWindow()) widget->hide();
    }
  }
  return made.front();
}

}  // namespace tessaly::bench
