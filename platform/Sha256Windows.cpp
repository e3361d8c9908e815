
#include "platform/OpenFileWindows.h"
#include "platform/Sha256.h"
#include "platform/Text.h"

namespace tessaly {

Expected<std::string> sha256Text(std::string_view bytes) {
  unsigned char sum[kSha256Digits / 2];
  BCRYPT_ALG_HANDLE algorithm = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;
  auto* const start = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
  const bool summed = ::BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0) == 0 &&
                      ::BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0) == 0 &&
                      ::BCryptHashData(hash, start, static_cast<ULONG>(bytes.size()), 0) == 0 &&
                      ::BCryptFinishHash(hash, sum, sizeof sum, 0) == 0;
  if (hash != nullptr) ::BCryptDestroyHash(hash);
  if (algorithm != nullptr) ::BCryptCloseAlgorithmProvider(algorithm, 0);
  if (!summed) return Failure{Failure::Kind::kNoSnapshot, "cannot be summed: the system refuses to"};
  return hexText(sum);
}

}  // namespace tessaly
