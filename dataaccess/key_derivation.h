#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// The cryptography that the platform provides.
namespace pradelis::dataaccess {

/// Fills `key` from a password: PBKDF2 with HMAC-SHA512 and `rounds` (at least 1) iterations.
void derive_key(std::string_view password, std::span<const std::byte> salt, std::int32_t rounds,
                std::span<std::byte> key);

/// Fills `bytes` with random ones that nobody can predict.
void fill_random(std::span<std::byte> bytes);

}  // namespace pradelis::dataaccess
