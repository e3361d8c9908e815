#include "widgets/SpokenComboBox.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QLineEdit>

namespace tessaly {

namespace {

// With the list that drops down, and the field of one that can be edited, as its children.
class SpokenComboBox : public QAccessibleWidget {
 public:
  explicit SpokenComboBox(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox), box_(*box) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return box_.currentText();
    const QString text = QAccessibleWidget::text(kind);
    // Screen readers of this desktop ask for no value of a box.
    return kind == QAccessible::Description && box_.accessibleDescription().isEmpty() ? box_.currentText()
                                                                                      : text;
  }
  [[nodiscard]] int childCount() const override { return box_.isEditable() ? 2 : 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    if (index == 0) return QAccessible::queryAccessibleInterface(box_.view());
    return index == 1 && box_.isEditable() ? QAccessible::queryAccessibleInterface(box_.lineEdit()) : nullptr;
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    if (child->object() == box_.view()) return 0;
    return box_.isEditable() && child->object() == box_.lineEdit() ? 1 : -1;
  }
  [[nodiscard]] QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& name) override {
    if (name != showMenuAction() && name != pressAction()) return;
    if (box_.view()->isVisible())
      box_.hidePopup();
    else
      box_.showPopup();
  }

 private:
  QComboBox& box_;
};

QAccessibleInterface* spoken(const QString& className, QObject* object) {
  if (className != QLatin1String("QComboBox")) return nullptr;
  auto* box = qobject_cast<QComboBox*>(object);
  return box != nullptr ? new SpokenComboBox(box) : nullptr;
}

}  // namespace

void speakComboBoxesByLabels() { QAccessible::installFactory(&spoken); }

}  // namespace tessaly
