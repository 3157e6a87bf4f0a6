#include <array>
#include <string>

#include "bench/cases.h"
#include "bench/harness.h"
#include "bench/page.h"

namespace pradelis::bench {
namespace {

constexpr int deals_of_a_run = 50;

/// Registers deals with the statements that the component sends, prepared once.
class RegisterByHand {
 public:
  explicit RegisterByHand(Database& database) : database_(database) {}

  void run(const std::string& name) {
    duplicate_.bind(1, std::int64_t{Contents::first_company}).bind(2, name);
    if (duplicate_.step()) throw std::runtime_error("duplicate deal");
    duplicate_.reset();
    const std::int64_t oid = new_oid();
    item_.bind(1, oid)
        .bind(2, name)
        .bind(3, std::string_view(""))
        .bind(4, std::int64_t{16075})
        .bind(5, std::int64_t{7})
        .bind(6, std::int64_t{Contents::seller})
        .bind(7, std::string_view("2026-03-05 14:07:33"))
        .bind(8, std::int64_t{Contents::seller})
        .bind(9, std::string_view("Ligar na segunda"))
        .run();
    deal_.bind(1, oid)
        .bind(2, std::int64_t{Contents::first_company})
        .bind(3, std::int64_t{0})
        .bind(4, std::int64_t{Contents::seller})
        .bind(5, std::string_view("2026-12-31 00:00:00"))
        .bind(6, 1500.0)
        .bind_null(7)
        .run();
    for (std::int64_t product_class : {101, 102, 103}) product_.bind(1, product_class).bind(2, oid).run();
  }

 private:
  std::int64_t new_oid() {
    if (left_ == 0) {
      block_.step();
      next_ = block_.integer(0) - 50;
      block_.reset();
      left_ = 50;
    }
    --left_;
    return next_++;
  }

  Database& database_;
  Statement duplicate_{
      database_,
      "select * from crm_pos_negocio where rpessoa=? and oid in (select oid from item where nome=?)"};
  Statement item_{
      database_,
      "insert into item (oid, nome, codigo, cid, rescopo, criadopor, criadoem, responsavel, observacao) "
      "values (?, ?, ?, ?, ?, ?, ?, ?, ?)"};
  Statement deal_{
      database_,
      "insert into crm_pos_negocio (oid, rpessoa, rcontato, rvendedor, dataprovavel, valorprovavel, "
      "rindicador) values (?, ?, ?, ?, ?, ?, ?)"};
  Statement product_{database_,
                     "insert into crm_classeprodutos_negocio (rclasseproduto, rnegocio) values (?, ?)"};
  Statement block_{database_, "update instalacao set proximooid = proximooid + 50 returning proximooid"};
  std::int64_t next_ = 0, left_ = 0;
};

void measure_registering(Fixture& fixture) {
  RegisterByHand by_hand(fixture.by_hand());
  int component_name = 0, hand_name = 0;
  report({"registering a deal with three classes", 1.15, 200,
          [&] {
            const component::CRMPtr crm = fixture.crm();
            for (int i = 0; i < deals_of_a_run; ++i) {
              register_deal(*crm, "Novo negócio " + std::to_string(++component_name));
            }
          },
          [&] {
            for (int i = 0; i < deals_of_a_run; ++i)
              by_hand.run("Novo negócio " + std::to_string(++hand_name));
          }});
}

void measure_closing(Fixture& fixture) {
  Statement read(fixture.by_hand(), "Select * from crm_pos_negocio where oid = ?");
  Statement change(fixture.by_hand(),
                   "update crm_pos_negocio set fechamento = ? where oid = ? and fechamento is ?");
  int component_run = 0, hand_run = 0;
  report({"changing one column of a deal", 1.15, 200,
          [&] {
            const component::CRMPtr crm = fixture.crm();
            const Variant date = make_date({.year = 2026, .month = 1, .day = 1 + component_run++ % 28});
            for (std::int32_t i = 0; i < deals_of_a_run; ++i)
              crm->Fechar_Negocio(date, Contents::first_deal + i * 7);
          },
          [&] {
            const int day = 1 + hand_run++ % 28;
            const std::string date =
                "2026-01-" + std::string(day < 10 ? "0" : "") + std::to_string(day) + " 00:00:00";
            for (std::int32_t i = 0; i < deals_of_a_run; ++i) {
              const std::int64_t oid = Contents::first_deal + i * 7;
              read.bind(1, oid).step();
              const std::string before(read.text(7));
              const bool was_null = sqlite3_column_type(read.get(), 7) == SQLITE_NULL;
              read.reset();
              change.bind(1, date).bind(2, oid);
              was_null ? change.bind_null(3) : change.bind(3, before);
              change.run();
            }
          }});
}

}  // namespace

void measure_deals(Fixture& fixture) {
  measure_registering(fixture);
  measure_closing(fixture);
}

}  // namespace pradelis::bench
