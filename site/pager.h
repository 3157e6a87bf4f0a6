#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "site/request.h"
#include "site/view.h"

namespace pradelis::site {

/// How a list is sorted: by a key, and by identifier where keys are equal.
struct Order {
  std::string key;           ///< expression of the key in the list's statement
  std::string identifier;    ///< expression of the identifier there
  std::string key_of_other;  ///< statement of one row's key; its identifier is appended
  bool descending = false;
};

/// Pages through a sorted list, forwards and backwards, from the row that the visitor saw last: each
/// page reads its own rows only, however far down the list it lies.
class Pager {
 public:
  static constexpr std::size_t page_size = 25;

  Pager(const Request& request, Order order);

  /// The row that the page goes on from; 0 for the first page. The caller checks that it may be seen.
  std::int32_t from() const { return from_; }

  /// Condition of the statement, to follow others with a leading " and "; empty for the first page.
  std::string condition() const;
  /// " order by …".
  std::string ordering() const;
  /// Rows to ask for: one more than are shown tells whether there are more.
  static constexpr std::int32_t limit() { return static_cast<std::int32_t>(page_size) + 1; }

  /// Takes the extra row away and puts the rows into the list's order.
  template <class RowData>
  void arrange(std::vector<RowData>& rows) {
    more_ = rows.size() > page_size;
    if (more_) rows.resize(page_size);
    if (backwards_) std::reverse(rows.begin(), rows.end());
  }

  /// For the template part "_pager". `first` and `last` are the identifiers of the rows shown.
  View view(std::int32_t first, std::int32_t last) const;

 private:
  std::string address(const char* parameter, std::int32_t identifier) const;

  Order order_;
  std::string address_;
  std::int32_t from_ = 0;
  bool backwards_ = false;
  bool more_ = false;
};

}  // namespace pradelis::site
