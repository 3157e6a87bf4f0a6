#include "bench/page.h"

#include <stdexcept>

#include "bench/contents.h"

namespace pradelis::bench {

void read_items(component::CRM& crm, const std::string& sql, std::vector<ItemRow>& rows) {
  crm.Executar(sql);
  dataaccess::Recordset& rs = *crm.rs;
  for (; !rs.Eof(); rs.MoveNext()) {
    rows.push_back({rs.value("oid").get<std::int32_t>(), rs.value("nome").get<std::string>(),
                    rs.value("codigo").get<std::string>(), rs.value("cid").get<std::int32_t>(),
                    rs.value("rescopo").get<std::int32_t>(), rs.value("criadopor").get<std::int32_t>(),
                    rs.value("criadoem").get<Date>(), rs.value("observacao").get<std::string>()});
  }
}

void register_deal(component::CRM& crm, const std::string& name) {
  std::int16_t step = 0;
  const Variant oid = crm.Cadastrar_Negocio(Contents::first_company, 0, Contents::seller, "31/12/2026",
                                            "101,102,103", 0, "Ligar na segunda", name, 1500, step);
  if (!oid.is(VariantType::Int32)) throw std::runtime_error("the deal was not registered");
}

}  // namespace pradelis::bench
