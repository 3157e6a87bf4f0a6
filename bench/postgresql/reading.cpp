#include <stdexcept>
#include <string>
#include <vector>

#include "bench/harness.h"
#include "bench/page.h"
#include "bench/postgresql/bare_driver.h"
#include "bench/postgresql/fixture.h"
#include "dataaccess/iso_date.h"

namespace pradelis::bench::postgresql {
namespace {

constexpr const char* query =
    "select oid, nome, codigo, cid, rescopo, criadopor, criadoem, observacao from item where oid >= ";

}  // namespace

void measure_reading(Fixture& fixture) {
  const Statement by_hand(fixture.by_hand(), std::string(query) + "$1 and oid <= $2");
  std::vector<ItemRow> rows;
  rows.reserve(500);
  const auto read_by_hand = [&] {
    rows.clear();
    const Result found = by_hand.run("2000001", "2000500");
    for (int row = 0; row < found.rows(); ++row) {
      rows.push_back({found.integer(row, 0), std::string(found.text(row, 1)), std::string(found.text(row, 2)),
                      found.integer(row, 3), found.integer(row, 4), found.integer(row, 5),
                      dataaccess::read_iso_date(found.text(row, 6)).value(),
                      std::string(found.text(row, 7))});
    }
  };
  report({"reading 500 rows of 8 columns by name", 2, 300,
          [&] {
            rows.clear();
            read_items(*fixture.crm(), std::string(query) + "2000001 and oid <= 2000500", rows);
          },
          read_by_hand});

  BareDriver driver(fixture.connection_string(), std::string(query) + "? and oid <= ?");
  report({"the same rows by the ODBC driver alone", 2, 300,
          [&] {
            if (driver.read(2'000'001, 2'000'500) != 500) throw std::runtime_error("rows are missing");
          },
          read_by_hand});
}

}  // namespace pradelis::bench::postgresql
