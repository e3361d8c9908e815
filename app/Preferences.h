#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>

namespace tessaly {

// What one user's desktop keeps of the program: where the site lies, how the window was left and its
// colours. In a file of the user's own, never in the site's settings file, whose form is fixed. Nothing is
// written before something is kept. GUI thread.
class Preferences {
 public:
  // "tessaly/tessaly.ini" in the user's configuration folder.
  Preferences();
  explicit Preferences(const QString& file);

  // Host path of the site that was named at a first start; empty when none was.
  [[nodiscard]] QString siteFolder() const;
  void setSiteFolder(const QString& folder);

  // "desktop", "light" or "dark".
  [[nodiscard]] QString palette() const;
  void setPalette(const QString& name);

  // Whether each command has a stripe of the colour of its destination.
  [[nodiscard]] bool destinationStripes() const;
  void setDestinationStripes(bool on);
  [[nodiscard]] bool headings() const;  // over the commands; on at first
  void setHeadings(bool on);

  // How a window or splitter was left, by its name; empty when it was never kept.
  [[nodiscard]] QByteArray place(const QString& name) const;
  void setPlace(const QString& name, const QByteArray& state);

  // What is kept by now is on the disk.
  void write() { file_.sync(); }

 private:
  QSettings file_;
};

}  // namespace tessaly
