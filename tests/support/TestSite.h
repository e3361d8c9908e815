#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/SiteAccess.h"

namespace tessaly {

// Keeps every text that was shown or asked, in order; answers questions with `answer`.
class RecordingMessages : public Messages {
 public:
  void show(const std::string& text, MessageIcon icon = MessageIcon::kExclamation) override {
    record(text, icon);
  }
  bool ask(const std::string& text, MessageIcon icon = MessageIcon::kQuestion) override {
    record(text, icon);
    return answering ? answering(text) : answer;
  }
  MessageChoice choose(const std::string& text, const std::string& other) override {
    if (other == "Show" && sendsAnyway) return MessageChoice::kOk;
    return chooseOther ? (record(text, MessageIcon::kQuestion), MessageChoice::kOther)
                       : Messages::choose(text, other);
  }
  // The texts so far, which are then forgotten.
  std::vector<std::string> take() {
    const std::lock_guard guard(mutex_);
    icons.clear();
    return std::exchange(texts, {});
  }

  std::vector<std::string> texts;
  std::vector<MessageIcon> icons;
  bool answer = true;
  std::function<bool(const std::string& text)> answering = {};  // in place of it
  bool chooseOther = false;                                     // where there is a third button
  bool sendsAnyway = true;  // macros with errors, unasked: most tests are not about what they hold

 private:
  void record(const std::string& text, MessageIcon icon) {
    const std::lock_guard guard(mutex_);
    texts.push_back(text);
    icons.push_back(icon);
  }
  std::mutex mutex_;
};

// A site in a folder of its own that is removed at the end. Paths are site paths ("c:\\x\\y.mac").
class TestSite {
 public:
  TestSite() : root(makeRoot()) {}
  ~TestSite() {
    std::error_code ignored;
    std::filesystem::remove_all(root.path(), ignored);
  }
  TestSite(const TestSite&) = delete;
  TestSite& operator=(const TestSite&) = delete;

  SiteAccess access() { return {root, messages}; }

  // Makes missing folders.
  void write(std::string_view sitePath, std::string_view bytes) const {
    const std::filesystem::path path = root.resolve(sitePath);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
  }

  // The file's bytes; "<missing>" when there is none.
  std::string read(std::string_view sitePath) const {
    std::ifstream file(root.resolve(sitePath), std::ios::binary);
    if (!file) return "<missing>";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  SiteRoot root;
  RecordingMessages messages;

 private:
  static std::filesystem::path makeRoot() {
    std::random_device random;
    std::filesystem::path folder;
    do {
      folder = std::filesystem::temp_directory_path() / ("tessaly-site-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder));
    return folder;
  }
};

}  // namespace tessaly
