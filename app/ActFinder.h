#pragma once

#include <memory>
#include <vector>

#include <QAction>
#include <QDialog>
#include <QMainWindow>
#include <QStringList>
#include <QTreeWidgetItem>

namespace Ui {
class ActFinder;
}

namespace tessaly {

// Finds an act of the menus by its words, in any order, as far as they are typed, and in each language that
// the program speaks. What is not possible now is grey and says why.
class ActFinder : public QDialog {
  Q_OBJECT

 public:
  explicit ActFinder(const QMainWindow& window, QWidget* parent = nullptr);
  ~ActFinder() override;

  // Once it is accepted.
  [[nodiscard]] QAction* chosen() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Row {
    QAction* action;
    QString title;      // with its menu in front
    QStringList names;  // the words of the title
    QStringList words;  // all others, in small letters as they are
  };

  void collect(const QMainWindow& window);
  void list(const QString& typed);
  void add(const Row& row);
  void showObstacles();
  [[nodiscard]] QAction* actionOf(const QTreeWidgetItem& item) const;
  void choose();

  std::unique_ptr<Ui::ActFinder> ui_;
  std::vector<Row> rows_;
};

// Opens it over the window and runs what is chosen.
void findAct(QMainWindow& window);

}  // namespace tessaly
