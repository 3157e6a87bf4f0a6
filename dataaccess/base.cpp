#include "dataaccess/base.h"

#include <initializer_list>
#include <span>
#include <vector>

#include "dataaccess/cell.h"
#include "dataaccess/installation.h"
#include "dataaccess/schema/fixed.h"
#include "dataaccess/thread_connection.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

constexpr std::int32_t password_code = 11;
constexpr std::int32_t creator_is_responsible = -1;

bool is_given(const Variant& value) { return !value.is_missing() && !value.is_null() && !value.is_empty(); }

Cell cell_of(std::int32_t value) { return Cell::of(std::int64_t{value}); }
Cell cell_of(Date value) { return Cell::of(value.serial, CellKind::Date); }
Cell cell_of(const std::string& text) {
  if (!is_valid_utf8(text)) raise(error_number::value_does_not_fit, "O texto não é UTF-8 válido.");
  return Cell::of(std::string_view(text));
}
Cell cell_or_null(const std::string& text) { return text.empty() ? Cell::null() : cell_of(text); }

/// Raises 3021 for a change that found no row.
void require_change(std::int64_t rows) {
  if (rows == 0) raise(error_number::no_current_row);
}

/// An `update` whose columns depend on what the caller gave.
class Update {
 public:
  explicit Update(std::string_view table) : sql_(concat("update ", table, " set ")) {}

  void set(std::string_view column, Cell value) {
    if (!values_.empty()) sql_ += ", ";
    add(column, value);
  }
  void where(std::string_view column, std::int32_t value) {
    sql_ += " where ";
    add(column, cell_of(value));
  }

  const std::string& sql() const { return sql_; }
  std::span<const Cell> values() const { return values_; }

 private:
  void add(std::string_view column, Cell value) {
    sql_.append(column).append(" = ?");
    values_.push_back(value);
  }

  std::string sql_;
  std::vector<Cell> values_;
};

class Base : public QLCBase {
 public:
  explicit Base(QLCConnPtr conn) : conn_(std::move(conn)) {}

  std::int32_t NovoOid() override { return installations_.next_oid(*conn_); }
  std::string CodificarSenha(const std::string& text, std::int32_t code) override;

  std::int32_t IncluirItem(std::int32_t criador, const std::string& nome, std::int32_t cid,
                           std::int32_t origem, std::int32_t escopo, const Variant& criadoem,
                           const Variant& reservado, const Variant& responsavel,
                           const std::string& observacao, const std::string& codigo,
                           std::int32_t opcao) override;
  std::int32_t AlterarItem(std::int32_t oid, std::int32_t alterador, const Variant& nome,
                           const Variant& escopo, const Variant& reservado, const Variant& observacao,
                           const Variant& reservado2) override;
  void ExcluirItem(const std::string& nome, const std::string& codigo, std::int32_t responsavel, Date quando,
                   std::int32_t aplicativo, std::int32_t cid, std::int32_t oid, std::int32_t opcao) override;
  void RegistrarItem(std::int32_t, std::int32_t, std::int32_t) override {}

  bool ClassificarItem(std::int32_t oid, std::int32_t categoria) override;
  bool IncluirAgrupamento(std::int32_t papel, std::int32_t grupo, std::int32_t item) override;
  bool RelacionarItens(std::int32_t item, std::int32_t tipo, std::int32_t outro, std::int32_t opcao) override;

  std::int32_t IncluirEndereco(std::int32_t item, std::int32_t cidade, const std::string& cep,
                               const std::string& bairro, const std::string& complemento,
                               const std::string& numero, const std::string& rua, const std::string& extra,
                               std::int32_t criador) override;
  std::int32_t AlterarEndereco(std::int32_t oid, std::int32_t item, std::int32_t cidade,
                               const std::string& cep, const std::string& bairro,
                               const std::string& complemento, const std::string& numero,
                               const std::string& rua, const std::string& extra,
                               std::int32_t alterador) override;

  std::string ColunaDoTipo(std::int32_t tipo) override;

 private:
  /// Runs a statement with "?" for its values; gives the number of rows changed.
  std::int64_t write(std::string_view sql, std::span<const Cell> values) {
    return connection_of(*conn_).change(StatementText::of(sql), values);
  }
  std::int64_t write(std::string_view sql, std::initializer_list<Cell> values) {
    return write(sql, std::span(values.begin(), values.size()));
  }

  QLCConnPtr conn_;
  Installations installations_;
};

std::string Base::CodificarSenha(const std::string& text, std::int32_t code) {
  if (code != password_code) raise(error_number::invalid_argument);
  return encode_password(text, installations_.password_settings(*conn_));
}

std::int32_t Base::IncluirItem(std::int32_t criador, const std::string& nome, std::int32_t cid, std::int32_t,
                               std::int32_t escopo, const Variant& criadoem, const Variant&,
                               const Variant& responsavel, const std::string& observacao,
                               const std::string& codigo, std::int32_t) {
  const Date created = is_given(criadoem) ? to_date(criadoem) : now();
  const std::int32_t given = is_given(responsavel) ? to_int32(responsavel) : creator_is_responsible;
  const std::int32_t responsible = given == creator_is_responsible ? criador : given;
  const std::int32_t oid = NovoOid();
  write(
      "insert into item (oid, nome, codigo, cid, rescopo, criadopor, criadoem, responsavel, observacao)"
      " values (?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {cell_of(oid), cell_of(nome), cell_or_null(codigo), cell_of(cid), cell_of(escopo), cell_of(criador),
       cell_of(created), cell_of(responsible), cell_of(observacao)});
  return oid;
}

std::int32_t Base::AlterarItem(std::int32_t oid, std::int32_t alterador, const Variant& nome,
                               const Variant& escopo, const Variant&, const Variant& observacao,
                               const Variant&) {
  std::string new_name;
  std::string new_note;
  Update update("item");
  const auto set_text = [&update](std::string_view column, const Variant& value, std::string& text) {
    if (value.is_missing()) return;
    if (!value.is_null()) text = to_text(value);
    update.set(column, value.is_null() ? Cell::null() : cell_of(text));
  };
  set_text("nome", nome, new_name);
  if (!escopo.is_missing()) update.set("rescopo", cell_of(to_int32(escopo)));
  set_text("observacao", observacao, new_note);
  update.set("atualizadopor", cell_of(alterador));
  update.set("atualizadoem", cell_of(now()));
  update.where("oid", oid);
  require_change(write(update.sql(), update.values()));
  return oid;
}

void Base::ExcluirItem(const std::string& nome, const std::string& codigo, std::int32_t responsavel,
                       Date quando, std::int32_t aplicativo, std::int32_t cid, std::int32_t oid,
                       std::int32_t) {
  write(
      "insert into excluido (nome, codigo, excluidopor, excluidoem, raplicativo, cid, oid)"
      " values (?, ?, ?, ?, ?, ?, ?)",
      {cell_of(nome), cell_of(codigo), cell_of(responsavel), cell_of(quando), cell_of(aplicativo),
       cell_of(cid), cell_of(oid)});
}

bool Base::ClassificarItem(std::int32_t oid, std::int32_t categoria) {
  return write("insert into classificacao (oid, ritem, rcategoria) values (?, ?, ?)",
               {cell_of(NovoOid()), cell_of(oid), cell_of(categoria)}) == 1;
}

bool Base::IncluirAgrupamento(std::int32_t papel, std::int32_t grupo, std::int32_t item) {
  return write("insert into agrupamento (oid, ritem, rgrupo, rpapel) values (?, ?, ?, ?)",
               {cell_of(NovoOid()), cell_of(item), cell_of(grupo), cell_of(papel)}) == 1;
}

bool Base::RelacionarItens(std::int32_t item, std::int32_t tipo, std::int32_t outro, std::int32_t) {
  return write("insert into comunicacao (oid, rtipo, ritem, rendereco) values (?, ?, ?, ?)",
               {cell_of(NovoOid()), cell_of(tipo), cell_of(item), cell_of(outro)}) == 1;
}

std::int32_t Base::IncluirEndereco(std::int32_t item, std::int32_t cidade, const std::string& cep,
                                   const std::string& bairro, const std::string& complemento,
                                   const std::string& numero, const std::string& rua,
                                   const std::string& extra, std::int32_t criador) {
  const std::int32_t oid =
      IncluirItem(criador, "", fixed::class_address, fixed::system_object, item, Variant::missing(),
                  Variant::missing(), creator_is_responsible, "", "", 0);
  write(
      "insert into endereco (oid, ritem, rcidade, cep, bairro, complemento, numero, rua, extra)"
      " values (?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {cell_of(oid), cell_of(item), cell_of(cidade), cell_of(cep), cell_of(bairro), cell_of(complemento),
       cell_of(numero), cell_of(rua), cell_of(extra)});
  return oid;
}

std::int32_t Base::AlterarEndereco(std::int32_t oid, std::int32_t item, std::int32_t cidade,
                                   const std::string& cep, const std::string& bairro,
                                   const std::string& complemento, const std::string& numero,
                                   const std::string& rua, const std::string& extra, std::int32_t alterador) {
  require_change(
      write("update endereco set ritem = ?, rcidade = ?, cep = ?, bairro = ?, complemento = ?, numero = ?,"
            " rua = ?, extra = ? where oid = ?",
            {cell_of(item), cell_of(cidade), cell_of(cep), cell_of(bairro), cell_of(complemento),
             cell_of(numero), cell_of(rua), cell_of(extra), cell_of(oid)}));
  const Variant kept = Variant::missing();
  return AlterarItem(oid, alterador, kept, kept, kept, kept, kept);
}

std::string Base::ColunaDoTipo(std::int32_t tipo) {
  switch (tipo) {
    case 2:
      return "NVALOR";
    case 3:
      return "dtvalor";
    case 4:
      return "LSVALOR";
    default:
      return "svalor";
  }
}

class DisplayFormat : public QLCData {
 public:
  std::string DataParaTexto(Date date, std::int32_t, std::int32_t) override { return to_text(date); }
};

}  // namespace

QLCBasePtr new_base(QLCConnPtr conn) { return std::make_shared<Base>(std::move(conn)); }

QLCDataPtr new_data() { return std::make_shared<DisplayFormat>(); }

}  // namespace pradelis::dataaccess
