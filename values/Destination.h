#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tessaly {

// Where a command is carried out: one of the four mainframes, or the panel.
class Destination {
 public:
  static constexpr int kMainframes = 4;
  static constexpr int kCount = kMainframes + 1;

  constexpr Destination() = default;  // the first mainframe
  // 0 to 3 are the mainframes, 4 is the panel: the order in which they are offered.
  [[nodiscard]] static constexpr Destination at(int index) { return Destination(index); }
  [[nodiscard]] static constexpr Destination mainframe(int number) {
    return Destination(number - 1);
  }  // 1 to 4
  [[nodiscard]] static constexpr Destination panel() { return Destination(kMainframes); }

  // Of "QMF1" to "QMF4" and "PANEL", upper and lower case told apart; nothing for any other text.
  [[nodiscard]] static constexpr std::optional<Destination> named(std::string_view name) {
    for (int index = 0; index < kCount; ++index)
      if (at(index).name() == name) return at(index);
    return std::nullopt;
  }

  // The mainframe of that name, or the first one.
  [[nodiscard]] static constexpr Destination mainframeOf(std::string_view name) {
    const auto known = named(name);
    return known && !known->isPanel() ? *known : Destination();
  }
  // Of a fid that begins with a prefix.
  [[nodiscard]] static constexpr std::optional<Destination> ofFid(std::string_view fid) {
    const std::size_t dot = fid.find('.');
    return dot == fid.npos ? std::nullopt : named(fid.substr(0, dot));
  }

  // What a fid begins with: "QMF1." to "QMF4.", "PANEL.".
  [[nodiscard]] constexpr std::string_view prefix() const {
    return kPrefixes[static_cast<std::size_t>(index_)];
  }
  [[nodiscard]] constexpr std::string_view name() const { return prefix().substr(0, prefix().size() - 1); }
  [[nodiscard]] constexpr int index() const { return index_; }
  [[nodiscard]] constexpr bool isPanel() const { return index_ == kMainframes; }

  friend constexpr bool operator==(const Destination&, const Destination&) = default;

 private:
  static constexpr std::array<std::string_view, kCount> kPrefixes{"QMF1.", "QMF2.", "QMF3.", "QMF4.",
                                                                  "PANEL."};

  explicit constexpr Destination(int index) : index_(index) {}

  int index_ = 0;
};

}  // namespace tessaly
