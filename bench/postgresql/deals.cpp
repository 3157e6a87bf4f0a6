#include <stdexcept>
#include <string>

#include "bench/harness.h"
#include "bench/page.h"
#include "bench/postgresql/fixture.h"
#include "values/text.h"

namespace pradelis::bench::postgresql {
namespace {

constexpr int deals_of_a_run = 20;

/// Registers deals with the statements that the component sends.
class RegisterByHand {
 public:
  explicit RegisterByHand(Server& server) : server_(server) {}

  void run(const std::string& name) {
    if (duplicate_.run(company_, name).rows() != 0) throw std::runtime_error("duplicate deal");
    const std::string oid = std::to_string(new_oid());
    item_.run(oid, name, "", "16075", "7", seller_, "2026-03-05 14:07:33", seller_, "Ligar na segunda");
    deal_.run(oid, company_, "0", seller_, "2026-12-31 00:00:00", "1500", nullptr);
    for (const char* product_class : {"101", "102", "103"}) product_.run(product_class, oid);
  }

 private:
  std::int32_t new_oid() {
    if (left_ == 0) {
      next_ = block_.run().integer(0, 0) - 50;
      left_ = 50;
    }
    --left_;
    return next_++;
  }

  Server& server_;
  std::string company_ = std::to_string(Contents::first_company);
  std::string seller_ = std::to_string(Contents::seller);
  Statement duplicate_{
      server_,
      "select * from crm_pos_negocio where rpessoa=$1 and oid in (select oid from item where "
      "nome=$2)"};
  Statement item_{
      server_,
      "insert into item (oid, nome, codigo, cid, rescopo, criadopor, criadoem, responsavel, observacao) "
      "values ($1, $2, $3, $4, $5, $6, $7, $8, $9)"};
  Statement deal_{server_,
                  "insert into crm_pos_negocio (oid, rpessoa, rcontato, rvendedor, dataprovavel, "
                  "valorprovavel, rindicador) values ($1, $2, $3, $4, $5, $6, $7)"};
  Statement product_{server_,
                     "insert into crm_classeprodutos_negocio (rclasseproduto, rnegocio) values ($1, $2)"};
  Statement block_{server_,
                   "update instalacao set proximooid = proximooid + 50 where oid = 1 returning proximooid"};
  std::int32_t next_ = 0, left_ = 0;
};

void measure_registering(Fixture& fixture) {
  RegisterByHand by_hand(fixture.by_hand());
  int component_name = 0, hand_name = 0;
  report({"registering a deal with three classes", 1.3, 150,
          [&] {
            const component::CRMPtr crm = fixture.crm();
            for (int i = 0; i < deals_of_a_run; ++i) {
              register_deal(*crm, concat("Da página ", ++component_name));
            }
          },
          [&] {
            for (int i = 0; i < deals_of_a_run; ++i) by_hand.run(concat("À mão ", ++hand_name));
          }});
}

void measure_closing(Fixture& fixture) {
  const Statement read(fixture.by_hand(), "Select * from crm_pos_negocio where oid = $1");
  const Statement close_open(
      fixture.by_hand(), "update crm_pos_negocio set fechamento = $1 where oid = $2 and fechamento is null");
  const Statement close_closed(
      fixture.by_hand(), "update crm_pos_negocio set fechamento = $1 where oid = $2 and fechamento = $3");
  int component_run = 0, hand_run = 0;
  report({"changing one column of a deal", 1.3, 150,
          [&] {
            const component::CRMPtr crm = fixture.crm();
            const Variant date = make_date({.year = 2026, .month = 1, .day = 1 + component_run++ % 28});
            for (std::int32_t i = 0; i < deals_of_a_run; ++i)
              crm->Fechar_Negocio(date, Contents::first_deal + i * 7);
          },
          [&] {
            const int day = 1 + hand_run++ % 28;
            const std::string date = concat("2026-01-", day < 10 ? "0" : "", day, " 00:00:00");
            for (std::int32_t i = 0; i < deals_of_a_run; ++i) {
              const std::string oid = std::to_string(Contents::first_deal + i * 7);
              const Result row = read.run(oid);
              const int column = PQfnumber(row.get(), "fechamento");
              if (PQgetisnull(row.get(), 0, column) != 0) {
                close_open.run(date, oid);
              } else {
                close_closed.run(date, oid, std::string(row.text(0, column)));
              }
            }
          }});
}

}  // namespace

void measure_deals(Fixture& fixture) {
  measure_registering(fixture);
  measure_closing(fixture);
}

}  // namespace pradelis::bench::postgresql
