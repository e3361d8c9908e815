#include "widgets/Message.h"

#include <QCoreApplication>

namespace tessaly {

namespace {

// On a light ground, and on a dark one.
struct Ink {
  QRgb light, dark;
};
constexpr Ink kWarningInk{0xFF7A4A00, 0xFFFFC46B};
constexpr Ink kFailureInk{0xFFA31515, 0xFFFF9D94};
constexpr int kHalfLight = 128;

class Words {
  Q_DECLARE_TR_FUNCTIONS(Message)

 public:
  static QString of(Grade grade) {
    switch (grade) {
      case Grade::kDone:
        return tr("Done");
      case Grade::kNote:
        return tr("Note");
      case Grade::kWarning:
        return tr("Warning");
      case Grade::kFailure:
        return tr("Failure");
    }
    return {};
  }
};

}  // namespace

QString gradeWord(Grade grade) { return Words::of(grade); }

RowMark gradeMark(Grade grade) {
  switch (grade) {
    case Grade::kDone:
      return RowMark::kDone;
    case Grade::kNote:
      return RowMark::kNote;
    case Grade::kWarning:
      return RowMark::kWarning;
    case Grade::kFailure:
      return RowMark::kError;
  }
  return RowMark::kNone;
}

QColor gradeInk(const QPalette& palette, Grade grade) {
  if (grade < Grade::kWarning) return palette.color(QPalette::Active, QPalette::WindowText);
  const Ink& ink = grade == Grade::kWarning ? kWarningInk : kFailureInk;
  const bool light = palette.color(QPalette::Active, QPalette::Window).lightness() >= kHalfLight;
  return QColor::fromRgb(light ? ink.light : ink.dark);
}

}  // namespace tessaly
