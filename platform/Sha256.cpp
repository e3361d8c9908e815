#include "platform/Sha256.h"

#include <openssl/evp.h>

#include "platform/LoadedLibrary.h"

namespace tessaly {
namespace {

struct Digests {
  [[nodiscard]] bool load() {
    const LoadedLibrary library(Library::kCrypto);
    return library.find("EVP_sha256", sha256) && library.find("EVP_Digest", digest);
  }

  decltype(&EVP_sha256) sha256 = nullptr;
  decltype(&EVP_Digest) digest = nullptr;
};

}  // namespace

Expected<std::string> sha256Text(std::string_view bytes) {
  const auto* const digests = loadedFunctions<Digests>();
  unsigned char sum[EVP_MAX_MD_SIZE];
  unsigned size = 0;
  if (digests == nullptr ||
      digests->digest(bytes.data(), bytes.size(), sum, &size, digests->sha256(), nullptr) != 1 ||
      size * 2 != kSha256Digits)
    return Failure{Failure::Kind::kNoSnapshot,
                   "cannot be summed: the library for SHA-256 (libssl3) cannot be loaded; is it installed?"};
  return hexText({sum, size});
}

}  // namespace tessaly
