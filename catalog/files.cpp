#include <cstdint>
#include <string>
#include <string_view>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

/// The file of this number in `table`, when one of `creators` attached it.
dataaccess::RecordsetPtr open_deletable(std::string_view table, std::int32_t id, const Variant& creators) {
  return shared_conn().AbrirRecordset(
      concat("select * from ", table, " where id=", id, " and criadopor in (", creators, ")"),
      dataaccess::CursorType::Static, dataaccess::LockType::Optimistic, dataaccess::CursorLocation::Server, 0,
      1, 10);
}

}  // namespace

Variant CRM::Adicionar_Arquivo(const Variant& Arquivo, const Variant& NOME, const Variant& CRIADOPOR,
                               const std::string& Observacao, const Variant& RITEM) {
  return reporting("Adicionar_Arquivo", rs, [&] {
    rs = open_table("crm_arquivo");
    rs->AddNew();
    rs->set("dado", Arquivo);
    rs->set("ritem", RITEM);
    rs->set("CRIADOEM", now());
    rs->set("ATUALIZADOEM", now());
    rs->set("NOME", NOME);
    rs->set("OBSERVACAO", Observacao);
    rs->set("CRIADOPOR", CRIADOPOR);
    rs->set("atualizadopor", CRIADOPOR);
    rs->Update();
    release(rs);
    return Variant(std::int16_t{0});
  });
}

Variant CRM::Excluir_Arquivo(std::int32_t IDARQUIVO, std::int32_t OIDFUNCIONARIO) {
  return reporting("Excluir_Arquivo", rs, [&]() -> Variant {
    sValor = "";
    String_filho(OIDFUNCIONARIO);

    rs = open_deletable("crm_arquivo", IDARQUIVO, sValor);
    if (rs->Eof()) {
      rs->Close();
      rs = open_deletable("crm_arquivo_hist", IDARQUIVO, sValor);
    }
    if (rs->Eof()) return "Você não tem permissão para excluir o arquivo.";
    rs->Delete();
    rs->Update();
    close_if_open(rs);
    return std::int16_t{0};
  });
}

std::string CRM::Escrever_Tamanho_Arquivo(Variant& TAM) {
  constexpr double kilobyte = 1024;
  constexpr double megabyte = 1048576;
  constexpr int decimals = 3;
  const double size = TAM.is_null() ? 0 : to_double(TAM);
  if (size > megabyte) {
    TAM = format_number(size / megabyte, decimals) + "M";
  } else if (size > kilobyte) {
    TAM = format_number(size / kilobyte, decimals) + "K";
  }
  return concat(TAM, "Bytes");
}

}  // namespace pradelis::component
