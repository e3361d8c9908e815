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

namespace tessaly::bench {

namespace {

template <class Widget>
QWidget* written(const QString& text) {
  return new Widget(text);
}

template <class Widget>
QWidget* plain(const QString&) {
  return new Widget;
}

QWidget* list(const QString& text) {
  auto* made = new QListView;
  made->setModel(new QStringListModel(text.split(u' ', Qt::SkipEmptyParts), made));
  return made;
}

QWidget* make(const QString& kind, const QString& text) {
  static const QHash<QString, QWidget* (*)(const QString&)> kinds{
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
  return maker(text);
}

void place(QWidget& parent, QWidget* child, const QStringList& line) {
  if (auto* window = qobject_cast<QMainWindow*>(&parent)) {
    if (auto* bar = qobject_cast<QMenuBar*>(child))
      window->setMenuBar(bar);
    else if (window->centralWidget() == nullptr)
      window->setCentralWidget(child);
    else
      child->setParent(window);  // lies over the others
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
    QWidget* widget = made.emplace_back(make(parts[1], parts[7]));
    if (const int parent = parts[0].toInt(); parent < 0) {
      widget->resize(parts[6].toInt(), parts[5].toInt());
    } else {
      place(*made[static_cast<std::size_t>(parent)], widget, parts);
      if (parts[2] == u'0' && !widget->isWindow()) widget->hide();
    }
  }
  return made.front();
}

}  // namespace tessaly::bench
