#pragma once

#include <cstdint>
#include <string>

#include "dataaccess/quelcor.h"

namespace pradelis::dataaccess {

/// How an installation stores passwords.
struct PasswordSettings {
  std::string salt;         ///< hexadecimal digits
  std::int32_t rounds = 0;  ///< of the key derivation
};

/// New settings with a random salt.
PasswordSettings new_password_settings(std::int32_t rounds);

/// The form in which `text` (login and password) is stored: 128 hexadecimal digits, or whatever the
/// deployment's own encoder gives.
std::string encode_password(const std::string& text, const PasswordSettings& settings);

}  // namespace pradelis::dataaccess
