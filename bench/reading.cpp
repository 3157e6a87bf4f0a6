#include <string>

#include "bench/cases.h"
#include "bench/harness.h"
#include "bench/page.h"

namespace pradelis::bench {
namespace {

constexpr const char* statement =
    "select oid, nome, codigo, cid, rescopo, criadopor, criadoem, observacao from item where oid >= 2000001 "
    "and "
    "oid <= 2000500";

Date date_of(std::string_view text) {
  const auto number = [&](std::size_t at, std::size_t count) {
    std::int32_t value = 0;
    for (std::size_t i = at; i < at + count; ++i) value = value * 10 + (text[i] - '0');
    return value;
  };
  return make_date(
      {number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(14, 2), number(17, 2), 0});
}

}  // namespace

void measure_reading(Fixture& fixture) {
  Statement by_hand(fixture.by_hand(), statement);
  std::vector<ItemRow> rows;
  rows.reserve(500);
  report({"reading 500 rows of 8 columns by name", 1.5, 400,
          [&] {
            rows.clear();
            read_items(*fixture.crm(), statement, rows);
          },
          [&] {
            rows.clear();
            const auto id = [&](int column) { return static_cast<std::int32_t>(by_hand.integer(column)); };
            while (by_hand.step()) {
              rows.push_back({id(0), std::string(by_hand.text(1)), std::string(by_hand.text(2)), id(3), id(4),
                              id(5), date_of(by_hand.text(6)), std::string(by_hand.text(7))});
            }
            by_hand.reset();
          }});
}

}  // namespace pradelis::bench
