#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::int32_t company_class = 46;
constexpr std::int32_t company_address_category = 1066;

void add_legal_name(dataaccess::RecordsetPtr& table, std::int32_t oid, const Variant& legal_name) {
  table = open_table("Pessoa");
  table->AddNew();
  table->set("RAZAOSOCIAL", legal_name);
  table->set("OID", oid);
  table->Update();
  table->Close();
}

void add_legal_person(dataaccess::RecordsetPtr& table, std::int32_t oid) {
  table = open_table("pessoajuridica");
  table->AddNew();
  table->set("oid", oid);
  table->Update();
  release(table);
}

}  // namespace

std::string CRM::Cadastrar_Empresa(const Variant& RAZAOSOCIAL, const Variant& Vendedor,
                                   const Variant& Observacao, const Variant& NOME, const Variant& CIDADE,
                                   const Variant& CEP, const Variant& BAIRRO, const Variant& Complemento,
                                   const Variant& Numero, const Variant& Rua,
                                   const Variant& CATEGORIA_CADASTRO) {
  return reporting("Cadastrar_Empresa", rs, [&]() -> std::string {
    rs = open_snapshot(
        concat("select oid from PessoaJuridica_r where UPPER(nome)=UPPER('", PrepararVariavel(NOME), "')"));
    if (!rs->Eof()) {
      release(rs);
      return "Já Existe uma pessoa Jurídica Cadastrada com esse nome.";
    }
    rs->Close();

    dataaccess::QLCBase& base = shared_base();
    const std::int32_t oid =
        base.IncluirItem(to_int32(Vendedor), to_text(NOME), company_class, 7, 7, Variant::missing(),
                         Variant::missing(), true, to_text(Observacao), "", 0);
    if (!base.ClassificarItem(oid, to_int32(CATEGORIA_CADASTRO))) return "";
    const std::int32_t address =
        base.IncluirEndereco(oid, to_int32(CIDADE), to_text(CEP), to_text(BAIRRO), to_text(Complemento),
                             to_text(Numero), to_text(Rua), "", to_int32(Vendedor));
    if (!base.ClassificarItem(address, company_address_category)) return "";

    add_legal_name(rs, oid, RAZAOSOCIAL);
    add_legal_person(rs, oid);
    return to_text(oid);
  });
}

std::string CRM::Alterar_Empresa(Variant& OID, const Variant& RAZAOSOCIAL, const Variant& Vendedor,
                                 const std::string& Observacao, const Variant& NOME, const Variant& CIDADE,
                                 const Variant& CEP, const Variant& BAIRRO, const Variant& Complemento,
                                 const Variant& Numero, const Variant& Rua) {
  return reporting("Alterar_Empresa", rs, [&] {
    rs = open_updatable(concat("SELECT RAZAOSOCIAL FROM pessoa WHERE OID=", OID));
    rs->set("RAZAOSOCIAL", RAZAOSOCIAL);
    rs->Update();
    rs->Close();

    OID = shared_base().AlterarItem(to_int32(OID), to_int32(Vendedor), NOME, Variant::missing(),
                                    Variant::missing(), Observacao, Variant::missing());

    rs = open_forward_only(concat("SELECT OID FROM endereco WHERE ritem=", OID));
    if (rs->Eof()) {
      RaiseError(error_number::business_refusal, "Pradelis.CRM.Alterar_Empresa",
                 "Não foi possível obter o OID do endereço da empresa.");
    }
    const std::int32_t address = to_int32(rs->value("oid"));
    shared_base().AlterarEndereco(address, to_int32(OID), to_int32(CIDADE), to_text(CEP), to_text(BAIRRO),
                                  to_text(Complemento), to_text(Numero), to_text(Rua), "",
                                  to_int32(Vendedor));
    release(rs);
    return std::string("0");
  });
}

}  // namespace pradelis::component
