#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

using component::CRM;
using dataaccess::CursorLocation;
using dataaccess::CursorType;
using dataaccess::LockType;
using dataaccess::RecordsetPtr;

class Queries : public ComponentTest {};

struct Query {
  decltype(&CRM::Executar) method;
  RecordsetPtr CRM::*slot;
  std::string source;
  std::string client_options;  ///< what is opened when the client side is asked for
};

const Query queries[] = {
    {&CRM::Executar, &CRM::rs, "Pradelis.CRM.Executar", "0,3,3,5"},
    {&CRM::Executar2, &CRM::rs2, "Pradelis.CRM.Executar2", "0,3,2,5"},
    {&CRM::Executar3, &CRM::rs3, "Pradelis.CRM.Executar3", "0,3,3,5"},
    {&CRM::Executar6, &CRM::rs6, "Pradelis.CRM.Executar6", "0,3,3,5"},
};

Variant query_with(CRM& crm, const Query& query, const Variant& sql) {
  return (crm.*query.method)(sql, CursorType::Static, LockType::ReadOnly, CursorLocation::Server, 0);
}

TEST_F(Queries, EachLeavesItsResultInItsOwnSlotWithTheCursorAskedFor) {
  StatementRecorder recorder;
  for (const Query& query : queries) {
    EXPECT_EQ(query_with(*crm_, query, "select 5 as n"), Variant("0"));
    ASSERT_NE((*crm_).*query.slot, nullptr);
    EXPECT_EQ(to_text(((*crm_).*query.slot)->value("N")), "5");
    ((*crm_).*query.method)("select 5 as n", CursorType::ForwardOnly, LockType::Optimistic,
                            CursorLocation::Client, 5);
    EXPECT_EQ(recorder.take(),
              (std::vector<std::string>{"static: select 5 as n", query.client_options + ": select 5 as n"}));
  }
}

TEST_F(Queries, AFailureEmptiesOnlyItsOwnSlot) {
  for (const Query& failing : queries) {
    for (const Query& query : queries) query_with(*crm_, query, "select 1 as n");
    const Failure failure =
        failure_of([&] { query_with(*crm_, failing, "select * from tabela_que_nao_existe"); });
    EXPECT_EQ(failure.number, error_number::no_such_table);
    EXPECT_EQ(failure.source, failing.source);
    EXPECT_FALSE(failure.description.empty());
    for (const Query& query : queries) {
      EXPECT_EQ((*crm_).*query.slot == nullptr, &query == &failing) << query.source;
    }
    EXPECT_EQ(failure_of([&] { query_with(*crm_, failing, Variant::null()); }).number,
              error_number::invalid_use_of_null);
  }
}

TEST_F(Queries, APageKeepsTheRecordsetThatTheSlotHeldBefore) {
  crm_->Executar("select 1 as n");
  const RecordsetPtr kept = crm_->rs;
  crm_->Executar("select 2 as n");
  EXPECT_EQ(to_text(kept->value("n")), "1");
  EXPECT_EQ(to_text(crm_->rs->value("n")), "2");
}

TEST_F(Queries, TheNumberOfRowsIsLimitedOnlyWhenAskedFor) {
  const std::string four_rows = "select 1 as n union select 2 union select 3 union select 4";
  const auto count = [&](std::int32_t limit) {
    crm_->Executar(four_rows, CursorType::Static, LockType::ReadOnly, CursorLocation::Server, limit);
    std::int32_t rows = 0;
    for (; !crm_->rs->Eof(); crm_->rs->MoveNext()) ++rows;
    return rows;
  };
  EXPECT_EQ(count(0), 4);
  EXPECT_EQ(count(3), 3);
  EXPECT_EQ(count(9), 4);
}

}  // namespace
}  // namespace pradelis::tests
