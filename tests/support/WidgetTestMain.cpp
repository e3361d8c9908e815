#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>

#include "widgets/KeyboardWay.h"
#include "widgets/QuietToolkit.h"

namespace {

// Every model that a view shows keeps the toolkit's rules, also while it changes.
class ModelRules final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* view = event->type() == QEvent::Show ? qobject_cast<QAbstractItemView*>(watched) : nullptr;
    QAbstractItemModel* model = view != nullptr ? view->model() : nullptr;
    if (model != nullptr && model->findChild<QAbstractItemModelTester*>() == nullptr)
      new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
    return false;
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  tessaly::KeyboardWay::open();
  ModelRules rules;
  toolkit.installEventFilter(&rules);
  return RUN_ALL_TESTS();
}
