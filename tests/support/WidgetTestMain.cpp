#include <gmock/gmock.h>
#include <string_view>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>

#include "widgets/KeyboardWay.h"
#include "widgets/QuietToolkit.h"

namespace {

// Every model of ours that a view shows keeps the toolkit's rules, also while it changes. The tester reads
// all of a model: in that of a file dialog it would open whatever lies on the disk.
class ModelRules final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* view = event->type() == QEvent::Show ? qobject_cast<QAbstractItemView*>(watched) : nullptr;
    QAbstractItemModel* model = view != nullptr ? view->model() : nullptr;
    if (model != nullptr && std::string_view(model->metaObject()->className()).starts_with("tessaly::") &&
        model->findChild<QAbstractItemModelTester*>() == nullptr)
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
