#include "automation/classes.h"
#include "automation/table_builder.h"

namespace pradelis::automation {
namespace {

using dataaccess::Connection;
using dataaccess::QLCBase;
using dataaccess::QLCConn;
using dataaccess::QLCData;
using dataaccess::RecordsetPtr;

/// Runs a statement; `rows_changed` receives a 32-bit integer where it fits.
RecordsetPtr execute(Connection& connection, const std::string& sql, Variant& rows_changed) {
  std::int64_t changed = 0;
  RecordsetPtr result = connection.Execute(sql, &changed);
  if (changed <= INT32_MAX)
    rows_changed = static_cast<std::int32_t>(changed);
  else
    rows_changed = changed;
  return result;
}

}  // namespace

const ClassTable& connection_table() {
  static const ClassTable table =
      TableBuilder<Connection>()
          .get<&Connection::ConnectionString>("ConnectionString")
          .let<&Connection::set_ConnectionString>("ConnectionString")
          .is_default()
          .get<&Connection::Location>("CursorLocation")
          .let<&Connection::set_Location>("CursorLocation")
          .get<&Connection::Mode>("Mode")
          .let<&Connection::set_Mode>("Mode")
          .let<&Connection::set_ConnectionTimeout>("ConnectionTimeout")
          .let<&Connection::set_CommandTimeout>("CommandTimeout")
          .get<&Connection::State>("State")
          .method<&Connection::Open>("Open")
          .method<&execute>("Execute", val("CommandText"), ref("RecordsAffected", none()))
          .method<&Connection::Close>("Close")
          .build();
  return table;
}

const ClassTable& qlcconn_table() {
  static const ClassTable table =
      TableBuilder<QLCConn>()
          .get<&QLCConn::ConnectionTimeout>("ConnectionTimeout")
          .let<&QLCConn::set_ConnectionTimeout>("ConnectionTimeout")
          .get<&QLCConn::CommandTimeout>("CommandTimeout")
          .let<&QLCConn::set_CommandTimeout>("CommandTimeout")
          .get<&QLCConn::ConnectionString>("ConnectionString")
          .let<&QLCConn::set_ConnectionString>("ConnectionString")
          .get<&QLCConn::Conexao>("Conexao")
          .method<&QLCConn::Abrir>("Abrir", val("mode"))
          .method<&QLCConn::AbrirRecordset>("AbrirRecordset", ref("sql"), val("CursorType"), val("LockType"),
                                            val("CursorLocation"), val("MaxRecords"), val("option", 1),
                                            val("page_size", 10))
          .method<&QLCConn::AbrirTabela>("AbrirTabela", val("table"), val("CursorType"), val("LockType"))
          .build();
  return table;
}

const ClassTable& qlcbase_table() {
  static const ClassTable table =
      TableBuilder<QLCBase>()
          .method<&QLCBase::NovoOid>("NovoOid")
          .method<&QLCBase::CodificarSenha>("CodificarSenha", val("text"), val("code"))
          .method<&QLCBase::IncluirItem>("IncluirItem", val("criador"), val("nome"), val("cid"),
                                         val("origem"), val("escopo"), val("criadoem"), val("reservado"),
                                         val("responsavel"), val("observacao"), val("codigo"), val("opcao"))
          .method<&QLCBase::AlterarItem>("AlterarItem", val("oid"), val("alterador"), val("nome", none()),
                                         val("escopo", none()), val("reservado", none()),
                                         val("observacao", none()), val("reservado2", none()))
          .method<&QLCBase::ExcluirItem>("ExcluirItem", val("nome"), val("codigo"), val("responsavel"),
                                         val("quando"), val("aplicativo"), val("cid"), val("oid"),
                                         val("opcao"))
          .method<&QLCBase::RegistrarItem>("RegistrarItem", val("codigo"), val("opcao"), val("oid"))
          .method<&QLCBase::ClassificarItem>("ClassificarItem", val("oid"), val("categoria"))
          .method<&QLCBase::IncluirAgrupamento>("IncluirAgrupamento", val("papel"), val("grupo"), val("item"))
          .method<&QLCBase::RelacionarItens>("RelacionarItens", val("item"), val("tipo"), val("outro"),
                                             val("opcao"))
          .method<&QLCBase::IncluirEndereco>("IncluirEndereco", val("item"), val("cidade"), val("cep"),
                                             val("bairro"), val("complemento"), val("numero"), val("rua"),
                                             val("extra"), val("criador"))
          .method<&QLCBase::AlterarEndereco>("AlterarEndereco", val("oid"), val("item"), val("cidade"),
                                             val("cep"), val("bairro"), val("complemento"), val("numero"),
                                             val("rua"), val("extra"), val("alterador"))
          .method<&QLCBase::ColunaDoTipo>("ColunaDoTipo", val("tipo"))
          .build();
  return table;
}

const ClassTable& qlcdata_table() {
  static const ClassTable table =
      TableBuilder<QLCData>()
          .method<&QLCData::DataParaTexto>("DataParaTexto", val("date"), val("option1"), val("option2"))
          .build();
  return table;
}

}  // namespace pradelis::automation
