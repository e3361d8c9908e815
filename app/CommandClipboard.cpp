#include "app/CommandClipboard.h"

#include <utility>

namespace tessaly {

namespace {

const QString kType = QStringLiteral("application/vnd.tessaly.commands+xml");

// Takes its part of a macro's commands out when they are dropped.
class CarriedCommands : public QMimeData {
 public:
  CarriedCommands(Macro macro, std::vector<int> numbers)
      : macro_(std::move(macro)), numbers_(std::move(numbers)) {}

  [[nodiscard]] QStringList formats() const override { return {kType}; }
  [[nodiscard]] Expected<CommandFragment> fragment() const { return CommandFragment::of(macro_, numbers_); }

 protected:
  [[nodiscard]] QVariant retrieveData(const QString& type, QMetaType) const override {
    if (type != kType) return {};
    const auto commands = fragment();
    return commands ? QByteArray::fromStdString(commands->text()) : QByteArray();
  }

 private:
  Macro macro_;
  std::vector<int> numbers_;
};

}  // namespace

std::unique_ptr<QMimeData> mimeData(const CommandFragment& commands) {
  auto data = std::make_unique<QMimeData>();
  data->setData(kType, QByteArray::fromStdString(commands.text()));
  data->setText(QString::fromStdString(commands.text()));
  return data;
}

std::unique_ptr<QMimeData> mimeData(Macro macro, std::vector<int> numbers) {
  return std::make_unique<CarriedCommands>(std::move(macro), std::move(numbers));
}

bool holdsCommands(const QMimeData& data) { return data.hasFormat(kType); }

Expected<CommandFragment> commandsIn(const QMimeData* data) {
  // Bytes could not tell why there are none.
  if (const auto* carried = dynamic_cast<const CarriedCommands*>(data)) return carried->fragment();
  if (data != nullptr && holdsCommands(*data)) return CommandFragment::read(data->data(kType).toStdString());
  if (data != nullptr && data->hasText()) return CommandFragment::read(data->text().toStdString());
  return Failure{Failure::Kind::kNoFragment, "holds no commands"};
}

}  // namespace tessaly
