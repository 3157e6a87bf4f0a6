#include "dataaccess/key_derivation.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include "values/error.h"

namespace pradelis::dataaccess {
namespace {

unsigned char* bytes_of(std::span<std::byte> bytes) { return reinterpret_cast<unsigned char*>(bytes.data()); }

void check(int succeeded) {
  if (succeeded != 1) raise(error_number::database_failed, "A biblioteca de criptografia falhou.");
}

}  // namespace

void derive_key(std::string_view password, std::span<const std::byte> salt, std::int32_t rounds,
                std::span<std::byte> key) {
  check(PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()),
                          reinterpret_cast<const unsigned char*>(salt.data()), static_cast<int>(salt.size()),
                          rounds, EVP_sha512(), static_cast<int>(key.size()), bytes_of(key)));
}

void fill_random(std::span<std::byte> bytes) {
  check(RAND_bytes(bytes_of(bytes), static_cast<int>(bytes.size())));
}

}  // namespace pradelis::dataaccess
