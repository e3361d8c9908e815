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

  // Asked before a macro goes to a panel; false keeps it from being sent. Told which pane shows it, if any.
  using SendQuestion =
      std::function<bool(const Macro& macro, const QString& name, std::optional<Pane> shownIn)>;
  // Before the first send.
  void setSendQuestion(SendQuestion question) { maySend_ = std::move(question); }
  // The one way to what is sent: nothing when it is not to be.
  [[nodiscard]] std::optional<Sendable> sendable(const std::string& bytes, const QString& name,
                                                 std::optional<Pane> shownIn) const;

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
  // Before something is written to any place: whether a pane but `from` shows it with unsaved changes, or it
  // may be written all the same.
  [[nodiscard]] bool mayPutUnder(const MacroPlace& place, std::optional<Pane> from);

  // Something was written to a place or taken from it: the panes that show what was there, without unsaved
  // changes, show what is there now.
  void follow(const MacroPlace& written, std::optional<Pane> except = std::nullopt);
  void follow(const MacroTarget& written, std::optional<Pane> except = std::nullopt) {
    follow(placeOf(written), except);
  }
  // They show nothing: what comes there is the panel's to say, in its own time.
  void forget(const MacroPlace& changed);

  // What people are told before a macro is written to where panes, but for one, show it with unsaved changes.
  [[nodiscard]] QStringList unsavedAt(const MacroPlace& place,
                                      std::optional<Pane> except = std::nullopt) const;
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
  // Says what came of it.
  void openTarget(Pane pane, const MacroTarget& target);
  // What is to be told; nothing when what was shown stays. To discard unsaved changes is a step of the macro;
  // they stay where the target cannot be read, unless the user gives them up.
  enum class Opens { kAnother, kToDiscard };
  [[nodiscard]] std::optional<Message> bring(Pane pane, const MacroTarget& target, Opens how);
  void discardOfNoPlace(Pane pane);
  // What is discarded cannot be read again where it belongs. Said when the changes stay.
  [[nodiscard]] bool mayGiveUp(Pane pane, const QString& macro, const QString& reason, bool cancelled);
  [[nodiscard]] bool shows(Pane pane, const MacroPlace& place) const;
  void showKeyFile(Pane pane, const MacroRow& row);
  // A macro of the disk, or of the snapshot that the pane shows, into a file of our own. What has been read
  // of it, so that it need not be read again.
  [[nodiscard]] Expected<std::optional<Macro>> fetch(Pane pane, const MacroTarget& target,
                                                     const std::string& file, Opens how) const;
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
  // To a panel, or without anything to send to the disk.
  [[nodiscard]] Written write(WorkingCopy& copy, const std::optional<Sendable>& toPanel);
  [[nodiscard]] Outcome writeOnDisk(const WorkingCopy& copy);
  Outcome keepUnsaved(const WorkingCopy& copy);
  [[nodiscard]] bool keepsFirst(Pane pane, std::optional<Outcome>& keeping);
  [[nodiscard]] static QString openMacro(const WorkingCopy& copy);
  [[nodiscard]] Message discarded(const QString& macro, const std::optional<Outcome>& keeping);
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
