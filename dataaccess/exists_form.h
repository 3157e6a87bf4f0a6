#pragma once

#include <string>
#include <string_view>

namespace pradelis::dataaccess {

/// Rewrites, in a query of one table, a condition "c in (select a from t union select b from u)" so that
/// t and u are asked for each row's c. An engine that reads both queries whole, and sorts them, each time
/// the statement runs takes as long as they are large. Gives the statement as it is where its meaning
/// could change.
std::string with_exists(std::string_view sql);

}  // namespace pradelis::dataaccess
