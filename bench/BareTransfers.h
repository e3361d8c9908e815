#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/CurlLibrary.h"

namespace tessaly::bench {

// libcurl and a panel on this machine alone, over one connection. The curl program would not do: where a
// reply comes at once it waits a second for nothing, transfer after transfer.
class BareTransfers {
 public:
  explicit BareTransfers(std::uint16_t port);
  ~BareTransfers();
  BareTransfers(const BareTransfers&) = delete;
  BareTransfers& operator=(const BareTransfers&) = delete;

  // Paths as the panel has them, from its root.
  void put(const std::string& bytes, const std::string& path) const;
  [[nodiscard]] std::string get(const std::string& path) const;

 private:
  using Easy = std::unique_ptr<CURL, decltype(CurlLibrary::easyCleanup)>;
  [[nodiscard]] Easy transfer(const std::string& path) const;
  void run(const Easy& easy) const;

  const CurlLibrary& curl_;
  CURLM* multi_;
  std::string server_;
};

}  // namespace tessaly::bench
