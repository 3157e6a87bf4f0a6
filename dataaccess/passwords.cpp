#include "dataaccess/passwords.h"

#include <array>
#include <span>
#include <vector>

#include "dataaccess/key_derivation.h"
#include "values/hexadecimal.h"

namespace pradelis::dataaccess {
namespace {

constexpr std::size_t salt_size = 32;
constexpr std::size_t key_size = 64;  // one block of SHA-512: more would cost without being stronger

PasswordEncoder& own_encoder() {
  static PasswordEncoder encoder;
  return encoder;
}

}  // namespace

PasswordSettings new_password_settings(std::int32_t rounds) {
  std::array<std::byte, salt_size> salt{};
  fill_random(salt);
  return {to_hexadecimal(salt), rounds};
}

std::string encode_password(const std::string& text, const PasswordSettings& settings) {
  if (own_encoder()) return own_encoder()(text);
  std::array<std::byte, key_size> key{};
  derive_key(text, std::as_bytes(std::span(settings.salt)), settings.rounds, key);
  return to_hexadecimal(key);
}

void replace_password_encoder(PasswordEncoder encoder) { own_encoder() = std::move(encoder); }

}  // namespace pradelis::dataaccess
