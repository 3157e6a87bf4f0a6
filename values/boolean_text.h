#pragma once

#include <optional>
#include <string_view>

namespace pradelis {

constexpr std::string_view true_text = "Verdadeiro";
constexpr std::string_view false_text = "Falso";

/// The Boolean that a text names, in Portuguese or English, with letters of either case; nothing when it
/// names none.
std::optional<bool> read_boolean(std::string_view text) noexcept;

}  // namespace pradelis
