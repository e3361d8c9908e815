#pragma once

#include <QDir>
#include <QImage>
#include <QSet>
#include <QStringList>

namespace tessaly {

// Small pictures of windows, as they are to look: grey, a quarter of the size, in few shades, so that a label
// that moved, came or went is seen and the edges of letters are not.
class KeptPictures {
 public:
  // They are made anew instead of being compared with.
  enum class Mode { kCompare, kRenew };

  KeptPictures(const QString& folder, Mode mode);

  // Whether the window looks as it did. Otherwise `grabbed` is put into `found`, to be looked at.
  [[nodiscard]] bool take(const QImage& grabbed, const QString& name, const QDir& found);
  // The pictures of windows that were not taken.
  [[nodiscard]] QStringList missing() const;

 private:
  QDir folder_;
  Mode mode_;
  QSet<QString> taken_;
};

}  // namespace tessaly
