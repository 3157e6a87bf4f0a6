#pragma once

#include <string_view>

#include "com/platform.h"

namespace pradelis::com {

/// The identifier that a text such as "D4D3DA2E-C5D3-4CC8-A6E5-3D2C292DB1AC" means.
constexpr GUID guid_of(std::string_view text) {
  const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  unsigned char bytes[16] = {};
  std::size_t place = 0;
  for (unsigned char& byte : bytes) {
    if (text[place] == '-') ++place;
    byte = static_cast<unsigned char>(digit(text[place]) * 16 + digit(text[place + 1]));
    place += 2;
  }
  GUID guid{};
  guid.Data1 = static_cast<unsigned long>(bytes[0]) << 24 | static_cast<unsigned long>(bytes[1]) << 16 |
               static_cast<unsigned long>(bytes[2]) << 8 | bytes[3];
  guid.Data2 = static_cast<unsigned short>(bytes[4] << 8 | bytes[5]);
  guid.Data3 = static_cast<unsigned short>(bytes[6] << 8 | bytes[7]);
  for (std::size_t i = 0; i < 8; ++i) guid.Data4[i] = bytes[8 + i];
  return guid;
}

}  // namespace pradelis::com
