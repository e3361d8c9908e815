#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

#include "app/MacroTarget.h"
#include "app/PanelTransfer.h"
#include "app/PositionCheck.h"
#include "app/ShownSnapshot.h"
#include "link/MacroNames.h"
#include "link/PanelConnection.h"
#include "model/CommandLine.h"
#include "model/SiteBrowser.h"
#include "platform/SiteAccess.h"
#include "platform/SystemFailure.h"
#include "widgets/DialogText.h"
#include "widgets/ListBox.h"
#include "widgets/Message.h"

namespace tessaly {

struct PaneState;

// Fills the five lists of one pane, left to right. Each list empties those to its right. GUI thread.
class Browser : public QObject {
  Q_OBJECT

 public:
  Browser(PaneState& pane, SiteAccess site, const LineContext& lines, const PanelConnection& connection,
          MacroNames& panelNames, PanelTransfer& beside);

  // All lists from the source on.
  void fillApplications();
  void chooseApplication();
  void chooseControlPanel();
  void chooseWorkplace();
  // The macros of the chosen workplace or older-family panel, anew; nothing is selected afterwards.
  void listMacros();
  // The lines of what the working copy holds, with these selected as far as they are there.
  void showCommands(const std::vector<int>& selected = {});
  // The same ones, after what their lines are made by has changed.
  void showLinesAgain();
  // How many there are, in the pane's progress line.
  void showCount();
  // The other pane has turned to another workplace of the panel, and this one goes along, unless unsaved
  // changes hold it: the names of one workplace are known at a time.
  void followWorkplace(int number);
  // Stays where it was held: its names are those that are known from now on, and the other pane goes along.
  void keepWorkplace();
  // Goes along now that the changes are saved or discarded.
  void catchUp();
  // Workplaces 1 and 2 and the macros of the demonstration, in place of what the panel would tell.
  void showDemoListing();
  // Only the rows, after values arrived: the selections stay as far as their rows do.
  void refreshWorkplaces();
  void refreshMacroNames();
  // The macros of the folder, if it is the one shown, after a change of it.
  void refreshFolder(const std::string& folder);
  // The rows of a panel that was connected while unsaved changes hold the pane.
  void refreshPanel();
  // To be shown from when the path of the pane is that of its file, and until it is another one.
  void setSnapshot(ShownSnapshot snapshot);
  // The path that the pane had before a snapshot, or has without one.
  [[nodiscard]] std::string pathWithoutSnapshot() const;
  // Selects a macro of the harddisk in all lists, as far as they show it; the working copy is left empty.
  void reveal(const MacroTarget& target);
  // The same of a key file, by the folder that it lies in.
  void revealKey(const std::string& folder, const std::string& numberText);
  // The same of a panel's macro in this workplace; the names may have to come first, which `changed` tells.
  // False while it is not listed.
  [[nodiscard]] bool revealOnPanel(int workplace, const std::string& numberText);

  // Site path of the chosen macro or key file folder; empty unless everything is chosen.
  [[nodiscard]] std::string macroFolder() const;
  [[nodiscard]] std::string keyFolder() const;
  [[nodiscard]] std::string applicationFolder() const;
  // Where the listed macros of the disk lie: the macro folder, or the place in a snapshot.
  [[nodiscard]] std::string sourceFolder() const;
  // Of the snapshot that is shown: the chosen workplace, as there; nothing without one.
  [[nodiscard]] std::optional<int> snapshotWorkplace() const;
  // A macro of it.
  [[nodiscard]] std::optional<std::string> snapshotBytes(std::string_view numberText) const;
  [[nodiscard]] int workplace() const;  // chosen number, 0 for none
  [[nodiscard]] MacroNameTable names() const;

 signals:
  void panelWorkplaceChosen(int number);
  void changed();  // lists, selection or working copy, by program: enabled states are to be looked at again
  void said(const tessaly::Message& message);

 private:
  // What lies in a place of the disk, without holding up the window where the disk is slow; nothing, after
  // saying so, when the user has given it up.
  template <class Result>
  [[nodiscard]] std::optional<Result> read(const std::string& place,
                                           std::function<Expected<Result>(const SiteRoot& root)> look) {
    auto found =
        beside_.block<Expected<Result>>(tr("Reading %1").arg(shown(place)),
                                        [root = site_.root, look = std::move(look)] { return look(root); });
    if (found && *found) return **std::move(found);
    tellNotListed(place, found ? found->failure() : cancelledFailure());
    return std::nullopt;
  }
  void tellNotListed(const std::string& place, const Failure& why);
  // Of the selected row; empty for none.
  [[nodiscard]] static std::string selectedText(const ListBox& list);

  [[nodiscard]] static bool chooseRow(ListBox& list, const std::function<bool(const ListRow& row)>& wanted);
  [[nodiscard]] bool chooseApplicationOf(const std::string& folder);
  [[nodiscard]] bool chooseMacro(const std::string& numberText);
  void followCopy();
  void clearFrom(int list);
  void chooseAgain(const std::optional<MacroRow>& before);
  void showConnectedPanel();
  void fillWorkplaces();
  void showLines();
  void listDiskMacros();
  void listKeyFiles();
  void listPanelMacros();
  void listSnapshotMacros();
  void findSnapshot();
  void showMacroRows();
  // What the macros list is a list of, and what the list of commands shows; known again when it is filled
  // anew.
  [[nodiscard]] std::string macrosOf() const;
  [[nodiscard]] std::string commandsOf() const;

  [[nodiscard]] bool onPanel() const;
  [[nodiscard]] bool showsPanelNames() const;
  // Those of this workplace are the ones that are known, for both panes.
  void takeNames();
  [[nodiscard]] std::string path() const;

  PaneState& pane_;
  SiteAccess site_;
  const LineContext& lines_;
  const PanelConnection& connection_;
  MacroNames& panelNames_;
  PanelTransfer& beside_;
  int shownRevision_ = -1;                 // of the working copy, as the list of commands shows it
  bool demo_ = false;                      // the demonstration is shown
  std::optional<ShownSnapshot> snapshot_;  // shown or, while the source is the panel, to be shown again
  std::string pathBefore_;                 // the stored one, before it
};

}  // namespace tessaly
