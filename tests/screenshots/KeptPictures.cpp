#include "tests/screenshots/KeptPictures.h"

#include <cstdlib>
#include <stdexcept>

namespace tessaly {

namespace {

constexpr int kQuarter = 4;
constexpr int kShade = 16;       // of 256
constexpr int kOtherShade = 40;  // a difference that no other drawing of the same letters makes
constexpr int kOtherPixels = 5;  // as many of them are another picture

QImage kept(const QImage& grabbed) {
  const QSize size = grabbed.size() / (kQuarter * grabbed.devicePixelRatio());
  QImage small = grabbed.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     .convertToFormat(QImage::Format_Grayscale8);
  small.setDevicePixelRatio(1);
  for (int y = 0; y < small.height(); ++y)
    for (int x = 0; x < small.width(); ++x) {
      uchar& shade = small.scanLine(y)[x];
      shade = static_cast<uchar>(shade / kShade * kShade);
    }
  return small;
}

bool alike(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return false;
  int others = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > kOtherShade) ++others;
  return others < kOtherPixels;
}

}  // namespace

KeptPictures::KeptPictures(const QString& folder, Mode mode) : folder_(folder), mode_(mode) {
  if (mode == Mode::kRenew && folder_.exists() && !folder_.removeRecursively())
    throw std::runtime_error("the old pictures stay");
  folder_.mkpath(QStringLiteral("."));
}

bool KeptPictures::take(const QImage& grabbed, const QString& name, const QDir& found) {
  taken_.insert(name);
  const QImage now = kept(grabbed);
  if (mode_ == Mode::kRenew) return now.save(folder_.filePath(name));
  if (alike(now, QImage(folder_.filePath(name)))) return true;
  static_cast<void>(grabbed.save(found.filePath(name)));
  return false;
}

QStringList KeptPictures::missing() const {
  QStringList missing;
  for (const QString& name : folder_.entryList({QStringLiteral("*.png")}, QDir::Files))
    if (!taken_.contains(name)) missing.append(name);
  return missing;
}

}  // namespace tessaly
