#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QStringList>

#include "app/MacroTransfers.h"
#include "app/PaneState.h"
#include "link/PanelConnection.h"
#include "widgets/Message.h"

namespace tessaly {

class MacroHistory;

// Opens macros into the panes' working copies and saves or discards what was changed there. What was done, or
// why not, is told in one line by `said`. GUI thread.
class OpenMacros : public QObject {
  Q_OBJECT

 public:
  OpenMacros(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
             const PanelConnection& connection, MacroTransfers& transfers, bool demo);

  // Asked before a macro goes to a panel; false keeps it from being sent. Told which pane shows it.
  using SendQuestion = std::function<bool(const Macro& macro, const QString& name, Pane pane)>;
  void setSendQuestion(SendQuestion question) { maySend_ = std::move(question); }
  [[nodiscard]] bool maySend(const Macro& macro, const QString& name, Pane pane) const {
    return !maySend_ || maySend_(macro, name, pane);
  }

  // The macro that is chosen in the pane's list.
  void open(Pane pane);
  enum class Saved { kNothing, kFailed, kDone };
  // Also a save that is owed. kNothing when there is nothing to save, nowhere to save it to, or the user
  // would not overwrite what somebody else has written there, or not send errors; edit state then stays.
  Saved save(Pane pane);
  void discard(Pane pane);
  // Before something is written to a place of the folder or workplace that the pane's list shows: whether
  // what stands there is what this program has read or put there, or may be overwritten all the same. What
  // the pane `from` shows can be compared with it. `said` tells otherwise.
  [[nodiscard]] bool mayPutAt(Pane list, const MacroTarget& target, std::optional<Pane> from);

  // Something was written to a place or taken from it: the panes that show what was there, without unsaved
  // changes, show what is there now.
  void follow(const MacroPlace& written, std::optional<Pane> except = std::nullopt);
  void follow(const MacroTarget& written, std::optional<Pane> except = std::nullopt) {
    follow(placeOf(written), except);
  }
  // They show nothing: what comes there is the panel's to say, in its own time.
  void forget(const MacroPlace& changed);

  // What people are told before a macro is put back to where panes show it with unsaved changes.
  [[nodiscard]] QStringList unsavedAt(const MacroPlace& place) const;
  // Whether a pane is connected to the panel, though the line may be lost.
  [[nodiscard]] bool reaches(const HostAddress& address) const;

  [[nodiscard]] MacroTarget selectedTarget(Pane pane) const;

 signals:
  void macroChosen();  // in either pane: a value update is no longer busy
  void said(const tessaly::Message& message);
  void saveFailed(Pane pane, const QString& text);
  // Instead of overwriting a place the user wants to see what stands there beside what the pane shows.
  void compareWanted(Pane pane, const tessaly::MacroTarget& place,
                     const tessaly::MacroTransfers::Present& present);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  // False: not what the target holds is shown. With the name of a step the steps of the macro go on over it.
  [[nodiscard]] bool openTarget(Pane pane, const MacroTarget& target, const std::string& step = {});
  [[nodiscard]] bool shows(Pane pane, const MacroPlace& place) const;
  void showKeyFile(Pane pane, const MacroRow& row);
  // A macro of the disk, or of the snapshot that the pane shows, into a file of our own. What has been read
  // of it, so that it need not be read again.
  [[nodiscard]] Expected<std::optional<Macro>> fetch(Pane pane, const MacroTarget& target,
                                                     const std::string& file) const;
  [[nodiscard]] bool mayOverwrite(Pane pane, QString& refusal);
  // Whether a place holds something that neither the list nor a pane nor a transfer has read or written.
  [[nodiscard]] bool unseen(Pane list, const MacroTarget& target, const std::string& bytes) const;
  void noteListed(Pane pane, const MacroTarget& saved);
  struct Written {
    bool done = false;
    bool cancelled = false;  // nothing has been tried, or nobody knows what has become of it
    QString reason = {};
    bool putRight = false;  // the working copy, which another program had changed
  };
  [[nodiscard]] Written write(WorkingCopy& copy);
  [[nodiscard]] Outcome writeOnDisk(const WorkingCopy& copy);
  Outcome keepUnsaved(const WorkingCopy& copy);
  void tellSaved(Pane pane, const Written& written, bool kept);

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  const PanelConnection& connection_;
  MacroTransfers& transfers_;
  bool demo_;
  SendQuestion maySend_;
};

// "007 - Name", for the strip.
[[nodiscard]] QString macroInStrip(const MacroTarget& target);

}  // namespace tessaly
