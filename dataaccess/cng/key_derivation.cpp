#include "dataaccess/key_derivation.h"

#include <windows.h>

#include <bcrypt.h>

#include "values/error.h"

namespace pradelis::dataaccess {
namespace {

UCHAR* bytes_of(std::span<std::byte> bytes) { return reinterpret_cast<UCHAR*>(bytes.data()); }

/// The platform takes what it only reads by pointers to what it might write.
UCHAR* input_of(const void* bytes) { return static_cast<UCHAR*>(const_cast<void*>(bytes)); }

void check(NTSTATUS status) {
  if (status < 0) raise(error_number::database_failed, "A criptografia do sistema operacional falhou.");
}

class HmacSha512 {
 public:
  HmacSha512() {
    check(
        BCryptOpenAlgorithmProvider(&handle_, BCRYPT_SHA512_ALGORITHM, nullptr, BCRYPT_ALG_HANDLE_HMAC_FLAG));
  }
  HmacSha512(const HmacSha512&) = delete;
  HmacSha512& operator=(const HmacSha512&) = delete;
  ~HmacSha512() { BCryptCloseAlgorithmProvider(handle_, 0); }

  BCRYPT_ALG_HANDLE get() const { return handle_; }

 private:
  BCRYPT_ALG_HANDLE handle_ = nullptr;
};

}  // namespace

void derive_key(std::string_view password, std::span<const std::byte> salt, std::int32_t rounds,
                std::span<std::byte> key) {
  const HmacSha512 hmac;
  check(BCryptDeriveKeyPBKDF2(hmac.get(), input_of(password.data()), static_cast<ULONG>(password.size()),
                              input_of(salt.data()), static_cast<ULONG>(salt.size()),
                              static_cast<ULONGLONG>(rounds), bytes_of(key), static_cast<ULONG>(key.size()),
                              0));
}

void fill_random(std::span<std::byte> bytes) {
  check(BCryptGenRandom(nullptr, bytes_of(bytes), static_cast<ULONG>(bytes.size()),
                        BCRYPT_USE_SYSTEM_PREFERRED_RNG));
}

}  // namespace pradelis::dataaccess
