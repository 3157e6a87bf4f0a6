#include "bench/cases.h"
#include "bench/harness.h"

namespace pradelis::bench {

void measure_appending(Fixture& fixture) {
  constexpr int rows_of_a_run = 50;
  Statement insert(fixture.by_hand(), "insert into classificacao (oid, ritem, rcategoria) values (?, ?, ?)");
  std::int32_t component_oid = 20'000'000, hand_oid = 20'000'000;
  report({"appending a row to a table of a million rows", 1.5, 200,
          [&] {
            const component::CRMPtr crm = fixture.crm();
            const dataaccess::QLCConnPtr conn = crm->QLCConn();
            for (int i = 0; i < rows_of_a_run; ++i) {
              const dataaccess::RecordsetPtr table = conn->AbrirTabela(
                  "classificacao", dataaccess::CursorType::Dynamic, dataaccess::LockType::Optimistic);
              table->AddNew();
              table->set("ritem", Contents::first_company);
              table->set("rcategoria", 2127);
              table->set("OID", ++component_oid);
              table->Update();
              table->Close();
            }
          },
          [&] {
            for (int i = 0; i < rows_of_a_run; ++i)
              insert.bind(1, std::int64_t{++hand_oid})
                  .bind(2, std::int64_t{Contents::first_company})
                  .bind(3, std::int64_t{2127})
                  .run();
          }});
}

}  // namespace pradelis::bench
