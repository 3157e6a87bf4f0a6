#include "tests/deals/deal_test.h"

namespace pradelis::tests {
namespace {

using DealSelection = DealTest;

TEST_F(DealSelection, TextsOfTheLoggedInUser) {
  host_.set_visible_users("12, 15");
  const std::string begin = "select oid from crm_pos_negocio where rvendedor in (12, 15) ";
  const std::string companies =
      " and RPESSOA in (select oid from item where ((criadopor in (12, 15) and oid in (select ritem from "
      "classificacao where RCATEGORIA=2127)) or (oid in (select ritem from classificacao where "
      "RCATEGORIA=2121)))) ";
  const Variant every = Variant::null();
  const Variant company = std::int32_t{501};
  const struct {
    Variant company;
    bool open, closed, lost;
    std::string rest;
  } cases[] = {
      {every, true, true, true,
       companies + " and (  fechamento is null or  valorfechamento is not null  or  rmotivo is not null )"},
      {company, true, false, false, " and RPESSOA=501  and (  fechamento is null)"},
      {company, false, true, false, " and RPESSOA=501  and (  valorfechamento is not null )"},
      {company, false, false, true, " and RPESSOA=501  and (  rmotivo is not null )"},
      {"501", true, false, true, " and RPESSOA=501  and (  fechamento is null or  rmotivo is not null )"},
      {company, false, false, false, " and RPESSOA=501  and ( )"},
  };
  for (const auto& expected : cases) {
    EXPECT_EQ(
        crm_->String_Negocio_Vendedor(0, expected.company, expected.open, expected.closed, expected.lost),
        begin + expected.rest);
    EXPECT_EQ(crm_->sValor, Variant("12, 15"));
  }
}

TEST_F(DealSelection, AnotherSalespersonsViewComesFromTheGroups) {
  crm_->sValor = "antes";
  const std::string sql = crm_->String_Negocio_Vendedor(640, Variant::null());
  EXPECT_EQ(sql.substr(0, 62), "select oid from crm_pos_negocio where rvendedor in (640)  and ");
  EXPECT_EQ(crm_->sValor, Variant("640"));

  crm_->cGrupoUsuarios()->strSQL.clear();
  crm_->String_Negocio_Vendedor(640, std::int32_t{501}, true, true, true, 1);
  EXPECT_EQ(crm_->cGrupoUsuarios()->strSQL, "SELECT * FROM agrupamento WHERE ritem = 640 and rpapel = 26735");
}

TEST_F(DealSelection, SelectsByTheColumnsAndNotByTheStatus) {
  host_.set_visible_users("601");
  const std::int32_t open = new_deal("aberto"), dated = new_deal("com data"), won = new_deal("ganho"),
                     lost = new_deal("perdido");
  crm_->Fechar_Negocio("01/05/2026", dated);
  crm_->Fechar_Negocio("01/05/2026", won);
  set_deal(won, "valorfechamento", 10.0);
  crm_->Perder_Negocio("01/05/2026", 33, "", lost);
  const auto select = [&](bool want_open, bool want_closed, bool want_lost) {
    return rows(crm_->String_Negocio_Vendedor(0, std::int32_t{501}, want_open, want_closed, want_lost) +
                " order by oid");
  };
  EXPECT_EQ(select(true, false, false), to_text(open));
  EXPECT_EQ(select(false, true, false), to_text(won));
  EXPECT_EQ(select(false, false, true), to_text(lost));
  EXPECT_EQ(failure_of([&] { select(false, false, false); }).number, error_number::wrong_statement);
}

TEST_F(DealSelection, FailsWithoutCompanyOrSession) {
  host_.set_visible_users("12");
  const Failure omitted = failure_of([&] { crm_->String_Negocio_Vendedor(); });
  EXPECT_EQ(omitted.number, error_number::type_mismatch);
  EXPECT_EQ(omitted.source, "Pradelis.CRM.String_Negocio_Vendedor");
  EXPECT_EQ(crm_->sValor, Variant("12"));

  host_.set_session("InformacoesUsuario", Variant::Array(4));
  EXPECT_EQ(failure_of([&] { crm_->String_Negocio_Vendedor(0, Variant::null()); }).number,
            error_number::subscript_out_of_range);
  host_.clear_session();
  EXPECT_EQ(failure_of([&] { crm_->String_Negocio_Vendedor(0, Variant::null()); }).number,
            error_number::type_mismatch);
}

}  // namespace
}  // namespace pradelis::tests
