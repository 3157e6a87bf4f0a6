#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "automation/classes.h"
#include "values/text.h"

/// The tables against what the interface promises, gathered by other criteria than the tables' own.
namespace pradelis::automation {
namespace {

std::string letter(ValueType type) {
  switch (type) {
    case ValueType::None:
      return "-";
    case ValueType::Boolean:
      return "b";
    case ValueType::UInt8:
      return "u1";
    case ValueType::Int16:
      return "i2";
    case ValueType::Int32:
      return "i4";
    case ValueType::Int64:
      return "i8";
    case ValueType::Double:
      return "r8";
    case ValueType::Date:
      return "date";
    case ValueType::Text:
      return "s";
    case ValueType::Variant:
      return "v";
    case ValueType::Matrix:
      return "m";
    case ValueType::Object:
      return "o";
  }
  return "?";
}

/// Types of the parameters in order: "v i4 i4 s".
std::string types_of(const Member& member) {
  std::string types;
  for (const Parameter& parameter : member.parameters)
    types += (types.empty() ? "" : " ") + letter(parameter.type);
  return types;
}

/// "member.parameter" of all parameters of which `wanted` is true.
template <class Wanted>
std::vector<std::string> parameters_where(const ClassTable& table, Wanted wanted) {
  std::vector<std::string> names;
  for (const Member& member : table.members()) {
    for (const Parameter& parameter : member.parameters) {
      if (wanted(member, parameter)) names.push_back(concat(member.name, ".", parameter.name));
    }
  }
  return names;
}

std::size_t count_of(const ClassTable& table, MemberKind kind) {
  return static_cast<std::size_t>(std::count_if(table.members().begin(), table.members().end(),
                                                [&](const Member& member) { return member.kind == kind; }));
}

TEST(Tables, AreSoundInThemselves) {
  for (const ClassTable* table : all_tables()) {
    std::set<std::string> names;
    std::map<std::int32_t, std::string_view> name_of_id;
    for (const Member& member : table->members()) {
      SCOPED_TRACE(concat(table->name(), ".", member.name));
      names.insert(to_lower(member.name));
      EXPECT_EQ(name_of_id.try_emplace(member.id, member.name).first->second, member.name);
      EXPECT_EQ(table->id_of(to_upper(member.name)), member.id);
      EXPECT_NE(member.invoke, nullptr);
      EXPECT_EQ(member.result == ValueType::Object,
                member.result_type_name != "" && member.result != ValueType::Int32);
      bool optional_before = false;
      for (const Parameter& parameter : member.parameters) {
        EXPECT_TRUE(parameter.optional || !optional_before) << "required after optional: " << parameter.name;
        EXPECT_TRUE(parameter.by_reference || !parameter.written_back) << parameter.name;
        if (!parameter.default_value.is_missing()) {
          EXPECT_TRUE(holds(parameter.default_value.type(), parameter.passed)) << parameter.name;
        }
        optional_before = parameter.optional;
      }
    }
    EXPECT_EQ(names.size(), name_of_id.size()) << table->name();
  }
}

TEST(Tables, CrmHasItsSlotsVariablesAndMethods) {
  const ClassTable& table = crm_table();
  EXPECT_EQ(count_of(table, MemberKind::Method), 48U);
  EXPECT_EQ(count_of(table, MemberKind::Get), 12U);
  EXPECT_EQ(count_of(table, MemberKind::Let), 2U);  // sValor, PValorNegocio
  EXPECT_EQ(count_of(table, MemberKind::Set), 5U);  // rs, rs2, rs3, rs6, sValor
  EXPECT_EQ(table.find(*table.id_of("sValor"), Use::Read)->result, ValueType::Variant);
  EXPECT_EQ(table.find(*table.id_of("PValorNegocio"), Use::Read)->result, ValueType::UInt8);
  EXPECT_EQ(table.find(*table.id_of("rs6"), Use::Read)->result_type_name, "Recordset");
  EXPECT_EQ(table.find(*table.id_of("cGrupoUsuarios"), Use::Read)->result_type_name, "GrupoUsuarios");
}

TEST(Tables, OnlyThreeMethodsOfCrmTakeValues) {
  const std::vector<std::string> by_value = {
      "Logar.USR",
      "Logar.PWD",
      "Logar.Estacao",
      "Logar.Abrir_Sessao_Uso",
      "Logar.senhaVendedor",
      "Cadastrar_Vendedor.Observacao",
      "Alterar_Grupo_Vendedor.RGRUPO",
      "Alterar_Grupo_Vendedor.OIDPessoa",
  };
  EXPECT_EQ(parameters_where(crm_table(),
                             [](const Member& member, const Parameter& parameter) {
                               return member.kind == MemberKind::Method && !parameter.by_reference;
                             }),
            by_value);
}

TEST(Tables, WrittenBackIsWhatTheMethodsSay) {
  const std::vector<std::string> written = {
      "FormataNumero.valor",
      "converte.valor1",
      "Logar.InfoUsr",
      "Cadastrar_Negocio.nErro",
      "Alterar_Negocio.nErro",
      "Alterar_Empresa.OID",
      "Escrever_Tamanho_Arquivo.TAM",
      "Cadastrar_Vendedor.LoginDoCRM",
      "Cadastrar_Vendedor.OidPessoaFisica",
  };
  EXPECT_EQ(parameters_where(crm_table(), [](const Member&, const Parameter& p) { return p.written_back; }),
            written);
  for (const ClassTable* table : {&pessoa_juridica_table(), &vendedor_table(), &grupo_usuarios_table()}) {
    EXPECT_TRUE(
        parameters_where(*table, [](const Member&, const Parameter& p) { return p.written_back; }).empty());
  }
}

TEST(Tables, DefaultsOfOptionalParameters) {
  const std::vector<std::pair<std::string, Variant>> defaults = {
      {"Executar.CursorType", 3},
      {"Executar.LockType", 1},
      {"Executar.CursorLocation", 2},
      {"Executar.MaxRecords", 0},
      {"DataAgora.DATAEHORA", true},
      {"Logar.Estacao", ""},
      {"Logar.Abrir_Sessao_Uso", true},
      {"Logar.senhaVendedor", ""},
      {"Finalizar_Sessao_Uso.Motivo", std::int16_t{2}},
      {"Cadastrar_Negocio.nErro", std::int16_t{0}},
      {"Alterar_Negocio.nErro", std::int16_t{0}},
      {"String_Negocio_Vendedor.OidVendedor", 0},
      {"String_Negocio_Vendedor.OIDEMPRESA", Variant::missing()},
      {"String_Negocio_Vendedor.ABERTO", true},
      {"String_Negocio_Vendedor.FECHADO", true},
      {"String_Negocio_Vendedor.Perdido", true},
      {"String_Negocio_Vendedor.tipoBusca", std::int16_t{3}},
      {"String_Empresa_Vendedor.OidVendedor", 0},
      {"String_Empresa_Vendedor.Cliente", true},
      {"Alterar_Aditivo.CRIAR_SE_NAO_HOUVER", true},
      {"Aditivo_Escrever.EscreverLinhaTab", true},
      {"Aditivo_Escrever.ValorSelecionado", ""},
      {"Aditivo_Escrever.ConcatHtml", ""},
      {"Aditivo_Escrever_Item.AlterarItem", 0},
      {"Aditivo_Escrever_Item.ConcatHtml", ""},
      {"Aditivo_Escrever_Item.Except", "-1000"},
      {"Cadastrar_Vendedor.Observacao", ""},
  };
  std::vector<std::pair<std::string, Variant>> found;
  for (const Member& member : crm_table().members()) {
    if (member.name.starts_with("Executar") && member.name != "Executar") continue;
    for (const Parameter& parameter : member.parameters) {
      if (parameter.optional)
        found.emplace_back(concat(member.name, ".", parameter.name), parameter.default_value);
    }
  }
  EXPECT_EQ(found, defaults);
  for (const char* sibling : {"Executar2", "Executar3", "Executar6"}) {
    const ClassTable& table = crm_table();
    const Member& one = *table.find(*table.id_of("Executar"), Use::Read);
    const Member& other = *table.find(*table.id_of(sibling), Use::Read);
    ASSERT_EQ(other.parameters.size(), one.parameters.size());
    for (std::size_t i = 0; i < one.parameters.size(); ++i) {
      EXPECT_EQ(other.parameters[i].default_value, one.parameters[i].default_value) << sibling << " " << i;
    }
  }
}

TEST(Tables, TypesOfParametersAndResults) {
  struct Case {
    const ClassTable& table;
    const char* name;
    const char* result;
    const char* parameters;
  };
  const Case cases[] = {
      {crm_table(), "Executar", "v", "v i4 i4 i4 i4"},
      {crm_table(), "converte", "s", "s"},
      {crm_table(), "DataAgora", "s", "b"},
      {crm_table(), "Logar", "b", "s s v s b s"},
      {crm_table(), "Iniciar_Sessao_Uso", "i4", "i4 s"},
      {crm_table(), "Finalizar_Sessao_Uso", "b", "i4 i2"},
      {crm_table(), "OidEmpresaCorrente", "i4", ""},
      {crm_table(), "Cadastrar_Negocio", "v", "i4 i4 i4 s s i4 s s r8 i2"},
      {crm_table(), "Perder_Negocio", "v", "v i4 v i4"},
      {crm_table(), "Negocio_Status", "s", "i4"},
      {crm_table(), "Fechamento_Previsto", "v", "v date v"},
      {crm_table(), "Alterar_Negocio", "s", "v i4 i4 s s i4 s r8 i2"},
      {crm_table(), "String_Negocio_Vendedor", "s", "i4 v b b b i2"},
      {crm_table(), "Cadastrar_Empresa", "s", "v v v v v v v v v v v"},
      {crm_table(), "Alterar_Empresa", "s", "v v v s v v v v v v v"},
      {crm_table(), "Cadastrar_Contato", "s", "i4 v i4 i4"},
      {crm_table(), "String_Empresa_Vendedor", "v", "i4 b"},
      {crm_table(), "Cadastrar_Cidade", "v", "v v s v v"},
      {crm_table(), "Excluir", "v", "v v i4 date i4 i4 i4"},
      {crm_table(), "Cadastrar_Atividade", "v", "i4 i4 i4 i4 i4 v s v v v v v"},
      {crm_table(), "Alterar_Atividade", "v", "i4 i4 i4 i4 v v i4 s i4 v v"},
      {crm_table(), "Adicionar_Arquivo", "v", "v v v s v"},
      {crm_table(), "Excluir_Arquivo", "v", "i4 i4"},
      {crm_table(), "Escrever_Tamanho_Arquivo", "s", "v"},
      {crm_table(), "Alterar_Aditivo", "s", "v v v b"},
      {crm_table(), "Aditivo_Ver", "s", "i4 i4"},
      {crm_table(), "Aditivo_Escrever", "-", "i4 i4 b s s"},
      {crm_table(), "Aditivo_Escrever_Item", "-", "v i4 i4 s s"},
      {crm_table(), "VerificaSubordinado", "b", "i4"},
      {crm_table(), "Cadastrar_Vendedor", "b", "v v v v v v v v v v v v v s"},
      {crm_table(), "Alterar_Grupo_Vendedor", "b", "i4 i4"},
      {pessoa_juridica_table(), "Montar_Arv_Classif", "-", "s i2 v s"},
      {vendedor_table(), "Montar_Arv_Vendedor", "-", "s i4 s i2"},
      {qlcbase_table(), "IncluirItem", "i4", "i4 s i4 i4 i4 v v v s s i4"},
      {recordset_table(), "GetRows", "m", "i4 v v"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const auto id = c.table.id_of(c.name);
    ASSERT_TRUE(id);
    const Member* member = c.table.find(*id, Use::Read);
    ASSERT_TRUE(member);
    EXPECT_EQ(letter(member->result), c.result);
    EXPECT_EQ(types_of(*member), c.parameters);
  }
}

TEST(Tables, GrupoUsuariosKeepsTheOrderOfItsSlots) {
  std::vector<std::string> slots;
  for (const Member& member : grupo_usuarios_table().members()) {
    const char* kind = member.kind == MemberKind::Get ? "get " : member.kind == MemberKind::Let ? "let " : "";
    slots.push_back(concat(kind, member.name, "(", types_of(member), ")", letter(member.result)));
  }
  const std::vector<std::string> expected = {
      "get strSQL()s",
      "let strSQL(s)-",
      "get LastError()s",
      "let LastError(s)-",
      "Cadastrar_Grupo(i4 s i4 s)b",
      "Excluir_Grupo(i4 i4)b",
      "Alterar_Grupo(i4 i4 s i4 s)b",
      "fGruposVisiveis(i4 i2)s",
      "fUsuariosVisiveis(i4 i2)s",
      "fSubGrupos(i4 i2)s",
      "fUsuariosGRP(s)s",
  };
  EXPECT_EQ(slots, expected);
  EXPECT_TRUE(parameters_where(grupo_usuarios_table(), [](const Member&, const Parameter& p) {
                return p.by_reference;
              }).empty());
}

}  // namespace
}  // namespace pradelis::automation
