#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::int16_t this_application = 20090;
constexpr std::int16_t session_open = 1;

/// A usage session of the workstation that another application opened and this one has not joined.
std::string joinable_session_statement(const std::string& workstation) {
  return concat(
      "SELECT SU.OID "
      "FROM SESSAODEUSO SU, SESSAOAPLICATIVO SA "
      "WHERE "
      "SU.OID = SA.RSESSAODEUSO "
      "AND SU.OID > 7 "
      "AND SU.SITUACAO = 1 "
      "AND SU.TERMINO IS NULL "
      "AND SA.ESTACAO = '",
      workstation,
      "' "
      "AND SA.RAPLICATIVO != 20090 "
      "AND SU.OID NOT IN (SELECT RSESSAODEUSO "
      "FROM SESSAOAPLICATIVO A "
      "WHERE "
      "A.ESTACAO = '",
      workstation,
      "' "
      "AND A.RAPLICATIVO = 20090 "
      "AND A.TERMINO IS NULL)");
}

void add_usage_session(dataaccess::RecordsetPtr& table, std::int32_t oid) {
  table = open_table("sessaodeuso");
  table->AddNew();
  table->set("TERMINO", Variant::null());
  table->set("INICIO", now());
  table->set("SITUACAO", session_open);
  table->set("OID", oid);
  table->Update();
  table->Close();
}

void add_application_session(dataaccess::RecordsetPtr& table, std::int32_t oid, std::int32_t usage_session,
                             std::int32_t user, const std::string& workstation) {
  table = open_table("sessaoaplicativo");
  table->AddNew();
  table->set("RSESSAODEUSO", usage_session);
  table->set("rAplicativo", this_application);
  table->set("RUSUARIO", user);
  table->set("ESTACAO", workstation);
  table->set("INICIO", now());
  table->set("TERMINO", Variant::null());
  table->set("OID", oid);
  table->Update();
  release(table);
}

}  // namespace

std::int32_t CRM::Iniciar_Sessao_Uso(std::int32_t rUsuario, const std::string& Estacao) {
  thread_state().last_message.clear();
  return reporting("Iniciar_Sessao_Uso", [&] {
    std::int32_t session = 0;
    working_ = open_forward_only(joinable_session_statement(Estacao));
    if (!working_->Eof()) {
      session = to_int32(working_->value("OID"));
    } else {
      const std::int32_t usage_session = shared_base().NovoOid();
      add_usage_session(working2_, usage_session);
      session = shared_base().NovoOid();
      add_application_session(working2_, session, usage_session, rUsuario, Estacao);
    }
    release(working_);
    return session;
  });
}

bool CRM::Finalizar_Sessao_Uso(std::int32_t OIDSessaoApp, std::int16_t Motivo) {
  thread_state().last_message.clear();
  return reporting("Finalizar_Sessao_Uso", [&] {
    if (shared_conn().Conexao()->State() == dataaccess::ObjectState::Closed) shared_conn().Abrir(2);
    working_ = open_updatable(
        concat("SELECT * FROM sessaoaplicativo WHERE TERMINO IS NULL AND OID = ", OIDSessaoApp));
    if (!working_->Eof()) working_->set("TERMINO", now());
    working_->Update();
    working2_ = open_updatable(concat(
        "SELECT * FROM sessaodeuso WHERE oid = ", working_->value("RSESSAODEUSO"), " AND TERMINO IS NULL"));
    if (!working_->Eof()) {
      working2_->set("TERMINO", now());
      working2_->set("SITUACAO", Motivo);
    }
    working2_->Update();
    release(working_);
    release(working2_);
    return true;
  });
}

std::int32_t CRM::OidEmpresaCorrente() {
  return reporting("OidEmpresaCorrente", [&] {
    dataaccess::RecordsetPtr company = open_forward_only(
        "SELECT ITEM.RESCOPO FROM UTILIZACAO_R,ITEM WHERE RUTILIZADO = ITEM.OID AND RITEM = 1 AND RUNIDADE = "
        "10449");
    const std::int32_t oid = to_int32(company->value("rescopo"));
    release(company);
    return oid;
  });
}

}  // namespace pradelis::component
