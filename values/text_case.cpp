#include <algorithm>
#include <array>
#include <cstdint>

#include "values/text.h"

namespace pradelis {
namespace {

/// Capitals from `first` to `last` in steps of `step`, each with its small letter `distance` above it.
struct CasePairs {
  std::uint16_t first;
  std::uint16_t last;
  std::uint8_t step;
  std::int16_t distance;
};

// The letters of Latin, Greek and Cyrillic whose capital and small letter are each other's only
// counterpart. All pairs have the same length in UTF-8, so a text keeps its length.
constexpr CasePairs case_pairs[] = {
    // Latin-1 and Latin Extended-A
    {0x00C0, 0x00D6, 1, 32},
    {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},
    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1},
    // Latin Extended-B
    {0x0181, 0x0181, 1, 210},
    {0x0182, 0x0184, 2, 1},
    {0x0186, 0x0186, 1, 206},
    {0x0187, 0x0187, 1, 1},
    {0x0189, 0x018A, 1, 205},
    {0x018B, 0x018B, 1, 1},
    {0x018E, 0x018E, 1, 79},
    {0x018F, 0x018F, 1, 202},
    {0x0190, 0x0190, 1, 203},
    {0x0191, 0x0191, 1, 1},
    {0x0193, 0x0193, 1, 205},
    {0x0194, 0x0194, 1, 207},
    {0x0196, 0x0196, 1, 211},
    {0x0197, 0x0197, 1, 209},
    {0x0198, 0x0198, 1, 1},
    {0x019C, 0x019C, 1, 211},
    {0x019D, 0x019D, 1, 213},
    {0x019F, 0x019F, 1, 214},
    {0x01A0, 0x01A4, 2, 1},
    {0x01A6, 0x01A6, 1, 218},
    {0x01A7, 0x01A7, 1, 1},
    {0x01A9, 0x01A9, 1, 218},
    {0x01AC, 0x01AC, 1, 1},
    {0x01AE, 0x01AE, 1, 218},
    {0x01AF, 0x01AF, 1, 1},
    {0x01B1, 0x01B2, 1, 217},
    {0x01B3, 0x01B5, 2, 1},
    {0x01B7, 0x01B7, 1, 219},
    {0x01B8, 0x01B8, 1, 1},
    {0x01BC, 0x01BC, 1, 1},
    {0x01C4, 0x01C4, 1, 2},
    {0x01C7, 0x01C7, 1, 2},
    {0x01CA, 0x01CA, 1, 2},
    {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},
    {0x01F1, 0x01F1, 1, 2},
    {0x01F4, 0x01F4, 1, 1},
    {0x01F6, 0x01F6, 1, -97},
    {0x01F7, 0x01F7, 1, -56},
    {0x01F8, 0x021E, 2, 1},
    {0x0220, 0x0220, 1, -130},
    {0x0222, 0x0232, 2, 1},
    {0x023B, 0x023B, 1, 1},
    {0x023D, 0x023D, 1, -163},
    {0x0241, 0x0241, 1, 1},
    {0x0243, 0x0243, 1, -195},
    {0x0244, 0x0244, 1, 69},
    {0x0245, 0x0245, 1, 71},
    {0x0246, 0x024E, 2, 1},
    // Greek
    {0x0370, 0x0372, 2, 1},
    {0x0376, 0x0376, 1, 1},
    {0x037F, 0x037F, 1, 116},
    {0x0386, 0x0386, 1, 38},
    {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},
    {0x03A3, 0x03AB, 1, 32},
    {0x03CF, 0x03CF, 1, 8},
    {0x03D8, 0x03EE, 2, 1},
    {0x03F7, 0x03F7, 1, 1},
    {0x03F9, 0x03F9, 1, -7},
    {0x03FA, 0x03FA, 1, 1},
    {0x03FD, 0x03FF, 1, -130},
    // Cyrillic
    {0x0400, 0x040F, 1, 80},
    {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},
    // Latin Extended Additional
    {0x1E00, 0x1E94, 2, 1},
    {0x1EA0, 0x1EFE, 2, 1},
};

enum class Case { upper, lower };

/// The counterparts of a range of letters, spread out at compile time to be looked up by index; a letter
/// without one stands for itself.
template <std::uint16_t First, std::uint16_t Last>
class CaseTable {
 public:
  constexpr explicit CaseTable(Case target) {
    for (std::size_t i = 0; i < letters_.size(); ++i) letters_[i] = static_cast<std::uint16_t>(First + i);
    for (const CasePairs& pairs : case_pairs) {
      if (pairs.first < First || pairs.first > Last) continue;
      for (int capital = pairs.first; capital <= pairs.last; capital += pairs.step) {
        const int small = capital + pairs.distance;
        const int from = target == Case::upper ? small : capital;
        const int to = target == Case::upper ? capital : small;
        letters_[static_cast<std::size_t>(from - First)] = static_cast<std::uint16_t>(to);
      }
    }
  }

  static constexpr bool covers(unsigned letter) { return letter >= First && letter <= Last; }
  constexpr unsigned operator[](unsigned letter) const { return letters_[letter - First]; }

 private:
  std::array<std::uint16_t, Last - First + 1> letters_ = {};
};

using TwoByteTable = CaseTable<0x0080, 0x052F>;
using ThreeByteTable = CaseTable<0x1E00, 0x1EFF>;

constexpr TwoByteTable two_byte_upper(Case::upper);
constexpr TwoByteTable two_byte_lower(Case::lower);
constexpr ThreeByteTable three_byte_upper(Case::upper);
constexpr ThreeByteTable three_byte_lower(Case::lower);

constexpr unsigned byte_at(const std::string& text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

constexpr bool continues_at(const std::string& text, std::size_t position) {
  return position < text.size() && (byte_at(text, position) & 0xC0U) == 0x80U;
}

void convert_two_bytes(std::string& text, std::size_t position, const TwoByteTable& table) {
  const unsigned letter = (byte_at(text, position) & 0x1FU) << 6 | (byte_at(text, position + 1) & 0x3FU);
  if (!TwoByteTable::covers(letter)) return;
  const unsigned counterpart = table[letter];
  text[position] = static_cast<char>(0xC0U | counterpart >> 6);
  text[position + 1] = static_cast<char>(0x80U | (counterpart & 0x3FU));
}

void convert_three_bytes(std::string& text, std::size_t position, const ThreeByteTable& table) {
  const unsigned letter = (byte_at(text, position) & 0x0FU) << 12 |
                          (byte_at(text, position + 1) & 0x3FU) << 6 | (byte_at(text, position + 2) & 0x3FU);
  if (!ThreeByteTable::covers(letter)) return;
  const unsigned counterpart = table[letter];
  text[position + 1] = static_cast<char>(0x80U | (counterpart >> 6 & 0x3FU));
  text[position + 2] = static_cast<char>(0x80U | (counterpart & 0x3FU));
}

char ascii_counterpart(char letter, Case target) {
  const char first = target == Case::upper ? 'a' : 'A';
  return letter >= first && letter <= first + 25 ? static_cast<char>(letter ^ 0x20) : letter;
}

/// Converts the sequence at `position`, which is no ASCII letter, in place, and gives its length; a byte
/// that starts no sequence counts as one of its own.
std::size_t convert_sequence(std::string& text, std::size_t position, Case target) {
  const unsigned lead = byte_at(text, position);
  const bool upper = target == Case::upper;
  if (lead >= 0xC2 && lead <= 0xDF && continues_at(text, position + 1)) {
    convert_two_bytes(text, position, upper ? two_byte_upper : two_byte_lower);
    return 2;
  }
  if (lead == 0xE1 && continues_at(text, position + 1) && continues_at(text, position + 2)) {
    convert_three_bytes(text, position, upper ? three_byte_upper : three_byte_lower);
    return 3;
  }
  return 1;
}

std::string in_case(std::string_view text, Case target) {
  std::string result(text);
  for (std::size_t i = 0; i < result.size();) {
    if (byte_at(result, i) < 0x80) {
      result[i] = ascii_counterpart(result[i], target);
      ++i;
    } else {
      i += convert_sequence(result, i, target);
    }
  }
  return result;
}

}  // namespace

std::string to_upper(std::string_view text) { return in_case(text, Case::upper); }

std::string to_lower(std::string_view text) { return in_case(text, Case::lower); }

}  // namespace pradelis
