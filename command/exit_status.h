#pragma once

/// What the process ends with.
namespace pradelis::command::exit_status {

inline constexpr int done = 0;
inline constexpr int failed = 1;          ///< a message on standard error says why
inline constexpr int not_understood = 2;  ///< options, or a line of `call`, that make no sense

}  // namespace pradelis::command::exit_status
