#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <QWidget>

#include "app/Preferences.h"
#include "platform/SiteRoot.h"

// Where the program finds its site, and what becomes of a start without one.
namespace tessaly {

// True when the root holds anything of a site: one of the two interface files, the settings file, or an
// application in the folder where the panes look first. Only reads.
[[nodiscard]] bool holdsSite(const SiteRoot& root);

// True when the root holds one of the two interface files; without them there are no functions to build with.
[[nodiscard]] bool describesFunctions(const SiteRoot& root);

// `folder`, or the nearest folder above it that holds a site: someone may name the drive in it. Empty when
// there is none.
[[nodiscard]] std::filesystem::path siteAround(const std::filesystem::path& folder);

// Copies the drives of `sample` into `root`, which is made when it is missing. A file that is there already
// stays. False when not all could be copied; a drive that was not there before is then not there either.
[[nodiscard]] bool copySampleSite(const std::filesystem::path& sample, const std::filesystem::path& root);

// The root of this start: `option`, else TESSALY_ROOT, else the folder in the preferences, else the user's
// data folder. When it holds no site the user is asked what to do; nothing is written before the answer.
// `sample` is the sample site to offer, empty for none. Nothing when the user would rather quit.
[[nodiscard]] std::optional<SiteRoot> chooseRoot(const std::string& option,
                                                 const std::filesystem::path& sample,
                                                 Preferences& preferences);

// Asks the same again while the program works with `current`. The chosen root, when the program is to start
// anew there, which may be the same one with the sample site in it; another one is remembered.
[[nodiscard]] std::optional<SiteRoot> chooseOtherRoot(const SiteRoot& current,
                                                      const std::filesystem::path& sample,
                                                      Preferences& preferences, QWidget& window);

// A folder that the user names, or the site around it, which is remembered. Nothing, after saying so, when
// there is none.
[[nodiscard]] std::optional<SiteRoot> openSite(Preferences& preferences, QWidget& window);

// A copy of the sample site to practise on, in a folder of its own in the user's data; the same one each
// time. Nothing when it cannot be made.
[[nodiscard]] std::optional<SiteRoot> sampleToWorkOn(const std::filesystem::path& sample);

}  // namespace tessaly
