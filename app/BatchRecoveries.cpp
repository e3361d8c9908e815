#include "app/BatchRecoveries.h"

#include <algorithm>

#include <QStringList>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

using How = BatchRecovery::How;

QString named(const std::vector<std::string>& places) {
  constexpr int kMost = 3;
  QStringList names;
  for (const std::string& place : places) names << shown(place);
  return names.size() > kMost ? names.mid(0, kMost).join(QStringLiteral(", ")) + QStringLiteral(", ...")
                              : names.join(QStringLiteral(", "));
}

Grade gradeOf(const BatchRecovery& recovery) {
  const bool known = recovery.how != How::kRefused && recovery.how != How::kUnknown;
  if (!known || !recovery.failed.empty()) return Grade::kFailure;
  return recovery.how == How::kWaits || !recovery.letAlone.empty() ? Grade::kWarning : Grade::kNote;
}

QString lineOf(const BatchRecovery& recovery) {
  const auto line = [&] {
    const QString title = shown(recovery.title);
    switch (recovery.how) {
      case How::kEnded:
        return BatchRecoveries::tr("\"%1\" was cut short, and has been ended").arg(title);
      case How::kUndone:
        return BatchRecoveries::tr("\"%1\" was cut short, and has been undone").arg(title);
      case How::kWaits:
        return BatchRecoveries::tr("\"%1\" was cut short; it goes on once its panel is connected").arg(title);
      case How::kRefused:
        return BatchRecoveries::tr("\"%1\" was cut short, and is let alone: %2")
            .arg(title, shown(recovery.reason));
      case How::kUnended:
        return BatchRecoveries::tr("\"%1\" was cut short, and is not ended yet").arg(title);
      case How::kUnknown:
        return BatchRecoveries::tr(
                   "nobody knows whether many macros were being written: the folder of such %1")
            .arg(shown(recovery.reason));
    }
    return QString();
  };
  QString text = line();
  if (!recovery.letAlone.empty())
    text = BatchRecoveries::tr("%1; let alone, since somebody else has written there: %2")
               .arg(text, named(recovery.letAlone));
  if (!recovery.failed.empty())
    text = BatchRecoveries::tr("%1; NOT written: %2 (%3)")
               .arg(text, named(recovery.failed), shown(recovery.reason));
  return text;
}

}  // namespace

BatchRecoveries::BatchRecoveries(Shelves shelves, Connected connected, QObject* parent)
    : QObject(parent),
      shelves_(std::move(shelves)),
      connected_(std::move(connected)),
      work_([this](const std::vector<BatchRecovery>& found, auto) { take(found); },
            [this](const Outcome&) {
              if (!lines_.isEmpty()) emit said({grade_, lines_.join(QStringLiteral("; "))});
            }) {}

void BatchRecoveries::start() {
  if (work_.running()) return;
  tried_ = connected_();
  waiting_ = false;
  lines_.clear();
  grade_ = Grade::kNote;
  work_.start([shelves = shelves_, connected = tried_](auto& report) -> Outcome {
    BatchRoom room(shelves, connected);
    const std::stop_callback cancelled(report.stop(), [&room] { room.cancel(); });
    for (BatchRecovery& recovery : recoverBatches(room.places())) report.add(std::move(recovery));
    return {};
  });
}

void BatchRecoveries::look() {
  if (waiting_ && !work_.running() && connected_() != tried_) start();
}

void BatchRecoveries::take(const std::vector<BatchRecovery>& found) {
  for (const BatchRecovery& recovery : found) {
    waiting_ = waiting_ || recovery.how == How::kWaits;
    lines_ << lineOf(recovery);
    grade_ = std::max(grade_, gradeOf(recovery));
    for (const MacroPlace& place : recovery.written) emit written(place);
  }
}

}  // namespace tessaly
