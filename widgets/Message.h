#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

#include "widgets/RowMark.h"

namespace tessaly {

// How much a message weighs. Given where it is made, never read out of its text.
enum class Grade {
  kDone,     // what was wanted
  kNote,     // nothing to be done about it
  kWarning,  // it is done, or nobody is to blame, but not all is as it should be
  kFailure   // what was wanted was NOT done
};

// What people are told without being stopped.
struct Message {
  Grade grade = Grade::kNote;
  QString text;
  QString where = {};  // what it is about, as far as the text does not say it
};

// "Warning" and its like, for those who do not see the sign.
[[nodiscard]] QString gradeWord(Grade grade);
[[nodiscard]] RowMark gradeMark(Grade grade);
// The colour of such a text on the ground of windows, with a contrast of 4.5 to 1.
[[nodiscard]] QColor gradeInk(const QPalette& palette, Grade grade);

}  // namespace tessaly
