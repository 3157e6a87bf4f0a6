#pragma once

#include <string>
#include <string_view>

namespace pradelis::site {

/// `bits` random bits (a multiple of 8, at most 512) from the system, in hexadecimal digits.
std::string random_token(int bits = 128);

/// What can be shown or kept instead of a random secret, since the secret cannot be found from it: 64
/// hexadecimal digits. Another `purpose` gives another one, and none of them tells of the others.
std::string digest_of(const std::string& secret, std::string_view purpose);

}  // namespace pradelis::site
