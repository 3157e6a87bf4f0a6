#include "dataaccess/schema/description.h"

namespace pradelis::dataaccess::schema {
namespace {

constexpr std::size_t name_size = 255;
constexpr bool required = true;

Column key(std::string_view name = "oid") { return {name, Type::Key}; }
Column reference(std::string_view name, bool is_required = false) {
  return {name, Type::Int32, 0, is_required};
}
Column date(std::string_view name) { return {name, Type::DateTime}; }
Column text(std::string_view name, std::size_t size = name_size) { return {name, Type::Text, size}; }
Column long_text(std::string_view name) { return {name, Type::LongText}; }
Column number(std::string_view name) { return {name, Type::Double}; }

/// What a file and an older version of it have in common. The bytes come last: the columns before them
/// are read without walking through a large file.
std::vector<Column> file_columns(Type key_type) {
  return {{"id", key_type},           reference("ritem"),     text("nome"),
          long_text("observacao"),    reference("criadopor"), date("criadoem"),
          reference("atualizadopor"), date("atualizadoem"),   {"dado", Type::Bytes}};
}

std::vector<Table> installation() {
  return {{"instalacao",
           {key(), reference("versao", required), text("sal"), reference("rodadas", required),
            reference("proximooid", required), reference("equipe")},
           {}}};
}

std::vector<Table> objects() {
  return {
      {"item",
       {key(), text("nome"), text("codigo", 60), reference("cid", required), reference("rescopo", required),
        reference("criadopor"), date("criadoem"), reference("responsavel"), reference("atualizadopor"),
        date("atualizadoem"), long_text("observacao")},
       {{"item_nome", "nome"},
        {"item_nome_maiusculo", "nome", Index::Kind::UpperCase},
        {"item_rescopo", "rescopo"},
        {"item_criadopor", "criadopor"}}},
      {"excluido",
       {{"registro", Type::Identity},
        text("nome"),
        text("codigo", 60),
        reference("excluidopor"),
        date("excluidoem"),
        reference("raplicativo"),
        reference("cid"),
        reference("oid")},
       {{"excluido_oid", "oid"}}},
      {"agrupamento",
       {key(), reference("ritem", required), reference("rgrupo", required), reference("rpapel", required)},
       {{"agrupamento_ritem", "ritem"}, {"agrupamento_rgrupo", "rgrupo, ritem"}}},
      {"classificacao",
       {key(), reference("ritem", required), reference("rcategoria", required)},
       {{"classificacao_rcategoria", "rcategoria, ritem"}, {"classificacao_ritem", "ritem"}}},
      {"comunicacao",
       {key(), reference("rtipo", required), reference("ritem", required), reference("rendereco", required)},
       {{"comunicacao_rendereco", "rendereco, rtipo, ritem"},
        {"comunicacao_ritem", "ritem, rtipo, rendereco"}}},
      {"utilizacao",
       {key(), reference("ritem", required), reference("runidade", required),
        reference("rutilizado", required)},
       {{"utilizacao_runidade", "runidade, ritem, rutilizado"}}},
  };
}

std::vector<Table> people_and_places() {
  return {
      {"pessoa", {key(), text("razaosocial")}, {}},
      {"pessoajuridica", {key()}, {}},
      {"pessoafisica", {key()}, {}},
      {"usuario", {key(), text("senha"), date("iniciovalidade")}, {{"usuario_senha", "senha"}}},
      {"vendedocad",
       {key("codvend"), text("nome"), reference("rpessoa"), reference("relaciona"), reference("codger"),
        text("senhaven")},
       {{"vendedocad_senhaven", "senhaven"}}},
      {"categoria", {key(), reference("rsuper", required)}, {{"categoria_rsuper", "rsuper"}}},
      {"filial", {key()}, {}},
      {"cidade", {key(), reference("rprovincia"), text("ddd", 10)}, {}},
      {"endereco",
       {key(), reference("ritem", required), reference("rcidade"), text("cep", 20), text("bairro"),
        text("complemento"), text("numero", 60), text("rua"), text("extra")},
       {{"endereco_ritem", "ritem"}}},
  };
}

std::vector<Table> sessions() {
  return {
      {"sessaodeuso", {key(), date("inicio"), date("termino"), {"situacao", Type::Int16}}, {}},
      // The index holds all that the search for a session to join asks of this table.
      {"sessaoaplicativo",
       {key(),
        reference("rsessaodeuso", required),
        {"raplicativo", Type::Int16, 0, required},
        reference("rusuario"),
        text("estacao"),
        date("inicio"),
        date("termino")},
       {{"sessaoaplicativo_estacao", "estacao, raplicativo, termino, rsessaodeuso"}}},
      {"sessaodosite",
       {{"chave", Type::TextKey, 64},
        reference("rpessoa", required),
        reference("usada", required),
        long_text("dados"),
        long_text("mensagem")},
       {{"sessaodosite_usada", "usada"}}},
  };
}

std::vector<Table> sales() {
  return {
      {"crm_pos_negocio",
       {key(), reference("rpessoa"), reference("rcontato"), reference("rvendedor"), date("dataprovavel"),
        number("valorprovavel"), reference("rindicador"), date("fechamento"), number("valorfechamento"),
        reference("rmotivo"), reference("rproduto")},
       {{"crm_pos_negocio_rpessoa", "rpessoa"},
        {"crm_pos_negocio_rvendedor", "rvendedor"},
        {"crm_pos_negocio_rproduto", "rproduto", Index::Kind::OnlySet}}},
      {"crm_classeprodutos_negocio",
       {{"registro", Type::Identity}, reference("rclasseproduto"), reference("rnegocio")},
       {{"crm_classeprodutos_negocio_rnegocio", "rnegocio"}}},
      {"crm_atividade",
       {key(), reference("rpessoa"), reference("rnegociopossivel"), reference("ratividade"),
        reference("rvendedor"), reference("rcontato"), date("data"), long_text("observacao"),
        date("proximocontato"), reference("rproximaatividade"), reference("rproximovendedor")},
       {{"crm_atividade_rpessoa", "rpessoa"},
        {"crm_atividade_rnegociopossivel", "rnegociopossivel"},
        {"crm_atividade_rproximovendedor", "rproximovendedor", Index::Kind::OnlySet}}},
      {"crm_produtos", {key(), text("nome")}, {{"crm_produtos_nome", "nome"}}},
      {"crm_arquivo", file_columns(Type::LastingIdentity), {{"crm_arquivo_ritem", "ritem"}}},
      {"crm_arquivo_hist", file_columns(Type::Key), {}},
  };
}

std::vector<Table> extra_fields() {
  return {
      {"dadoadicional",
       {key(), reference("ritem"), text("valor"), reference("rtipo"), reference("rlista"),
        reference("visivel"), reference("ordem")},
       {{"dadoadicional_ritem", "ritem"}}},
      {"listadeobjetos", {key(), long_text("especificacao")}, {}},
      {"aditivo",
       {key(), reference("ritem"), reference("rdefinicao"), text("svalor", 2000), reference("nvalor"),
        date("dtvalor"), text("lsvalor")},
       {{"aditivo_ritem", "ritem, rdefinicao"}}},
  };
}

}  // namespace

const std::vector<Table>& tables() {
  static const std::vector<Table> all = [] {
    std::vector<Table> result;
    for (auto part : {installation, objects, people_and_places, sessions, sales, extra_fields}) {
      for (Table& table : part()) result.push_back(std::move(table));
    }
    return result;
  }();
  return all;
}

}  // namespace pradelis::dataaccess::schema
