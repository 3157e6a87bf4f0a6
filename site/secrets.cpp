#include "site/secrets.h"

#include <array>
#include <cstddef>
#include <span>

#include "dataaccess/key_derivation.h"
#include "values/hexadecimal.h"

namespace pradelis::site {

std::string random_token(int bits) {
  std::array<std::byte, 64> bytes{};
  const auto used = std::span(bytes).first(static_cast<std::size_t>(bits) / 8);
  dataaccess::fill_random(used);
  return to_hexadecimal(used);
}

std::string digest_of(const std::string& secret, std::string_view purpose) {
  std::array<std::byte, 32> digest{};
  // One round is enough: the secret is random, so that nobody can go through all of them.
  dataaccess::derive_key(secret, std::as_bytes(std::span(purpose)), 1, digest);
  return to_hexadecimal(digest);
}

}  // namespace pradelis::site
