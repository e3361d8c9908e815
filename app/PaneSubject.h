#pragma once

#include <QCoreApplication>
#include <QString>

namespace tessaly {

struct PaneState;
class Browser;
class MacroHistory;
class PanelConnection;

// What somebody who looks at a pane is looking at, in words.
struct PaneSubject {
  Q_DECLARE_TR_FUNCTIONS(PaneSubject)

 public:
  enum class Where { kDisk, kPanel, kLost, kNotConnected, kSnapshot, kKeyFile, kHistory, kNoPlace };

  Where where = Where::kDisk;
  QString title;     // number and name, or that nothing is open
  QString place;     // as short as it can be said; may be empty
  QString path;      // the same in full, where that is longer
  QString unsaved;   // empty when nothing is
  QString lastStep;  // what the last change was; empty without one

  // "On the panel" and its like.
  [[nodiscard]] QString word() const;
  // All of it, part by part.
  [[nodiscard]] QStringList parts() const;

  friend bool operator==(const PaneSubject&, const PaneSubject&) = default;
};

[[nodiscard]] PaneSubject subjectOf(const PaneState& pane, const Browser& browser,
                                    const PanelConnection& connection, const MacroHistory& history);

}  // namespace tessaly
