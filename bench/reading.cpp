#include <string>

#include "bench/cases.h"
#include "bench/harness.h"

namespace pradelis::bench {
namespace {

constexpr const char* statement =
    "select oid, nome, codigo, cid, rescopo, criadopor, criadoem, observacao from item where oid >= 2000001 "
    "and "
    "oid <= 2000500";

/// What a page keeps of a row.
struct Row {
  std::int64_t oid;
  std::string nome, codigo;
  std::int64_t cid, rescopo, criadopor;
  Date criadoem;
  std::string observacao;
};

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
  std::vector<Row> rows;
  rows.reserve(500);
  report({"reading 500 rows of 8 columns by name", 1.5, 400,
          [&] {
            rows.clear();
            const component::CRMPtr crm = fixture.crm();
            crm->Executar(statement);
            dataaccess::Recordset& rs = *crm->rs;
            for (; !rs.Eof(); rs.MoveNext()) {
              rows.push_back({rs.value("oid").get<std::int32_t>(), rs.value("nome").get<std::string>(),
                              rs.value("codigo").get<std::string>(), rs.value("cid").get<std::int32_t>(),
                              rs.value("rescopo").get<std::int32_t>(),
                              rs.value("criadopor").get<std::int32_t>(), rs.value("criadoem").get<Date>(),
                              rs.value("observacao").get<std::string>()});
            }
          },
          [&] {
            rows.clear();
            while (by_hand.step()) {
              rows.push_back({by_hand.integer(0), std::string(by_hand.text(1)), std::string(by_hand.text(2)),
                              by_hand.integer(3), by_hand.integer(4), by_hand.integer(5),
                              date_of(by_hand.text(6)), std::string(by_hand.text(7))});
            }
            by_hand.reset();
          }});
}

}  // namespace pradelis::bench
