#include "tests/support/recording.h"

#include <utility>

#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::tests {

namespace {

using namespace dataaccess;
using Statements = std::shared_ptr<std::vector<std::string>>;

std::string opened_as(CursorType cursor, LockType lock, CursorLocation location, std::int32_t limit) {
  const std::string numbers = concat(static_cast<std::int32_t>(cursor), ",", static_cast<std::int32_t>(lock),
                                     ",", static_cast<std::int32_t>(location), ",", limit);
  if (numbers == "3,1,2,0") return "static";
  if (numbers == "0,1,2,0") return "forward";
  if (numbers == "2,3,2,0") return "updatable";
  if (numbers == "3,3,2,0") return "static updatable";
  return numbers;
}

class RecordingConnection : public Connection {
 public:
  RecordingConnection(ConnectionPtr real, Statements statements)
      : real_(std::move(real)), statements_(std::move(statements)) {}

  const std::string& ConnectionString() const override { return real_->ConnectionString(); }
  void set_ConnectionString(const std::string& value) override { real_->set_ConnectionString(value); }
  CursorLocation Location() const override { return real_->Location(); }
  void set_Location(CursorLocation value) override { real_->set_Location(value); }
  ConnectMode Mode() const override { return real_->Mode(); }
  void set_Mode(ConnectMode value) override { real_->set_Mode(value); }
  void set_ConnectionTimeout(std::int16_t seconds) override { real_->set_ConnectionTimeout(seconds); }
  void set_CommandTimeout(std::int16_t seconds) override { real_->set_CommandTimeout(seconds); }
  void Open() override { real_->Open(); }
  ObjectState State() const override { return real_->State(); }
  void Close() override { real_->Close(); }
  RecordsetPtr Execute(const std::string& sql, std::int64_t* rows_changed) override {
    statements_->push_back("execute: " + sql);
    return real_->Execute(sql, rows_changed);
  }

 private:
  ConnectionPtr real_;
  Statements statements_;
};

class RecordingConn : public QLCConn {
 public:
  RecordingConn(QLCConnPtr real, Statements statements)
      : real_(std::move(real)), statements_(std::move(statements)) {}

  std::int16_t ConnectionTimeout() const override { return real_->ConnectionTimeout(); }
  void set_ConnectionTimeout(std::int16_t seconds) override { real_->set_ConnectionTimeout(seconds); }
  std::int16_t CommandTimeout() const override { return real_->CommandTimeout(); }
  void set_CommandTimeout(std::int16_t seconds) override { real_->set_CommandTimeout(seconds); }
  const std::string& ConnectionString() const override { return real_->ConnectionString(); }
  void set_ConnectionString(const std::string& value) override { real_->set_ConnectionString(value); }
  ConnectionPtr Conexao() override {
    return std::make_shared<RecordingConnection>(real_->Conexao(), statements_);
  }
  void Abrir(std::int32_t mode) override { real_->Abrir(mode); }
  RecordsetPtr AbrirRecordset(const std::string& sql, CursorType cursor, LockType lock,
                              CursorLocation location, std::int32_t max_records, std::int32_t option,
                              std::int32_t page_size) override {
    statements_->push_back(concat(opened_as(cursor, lock, location, max_records), ": ", sql));
    return real_->AbrirRecordset(sql, cursor, lock, location, max_records, option, page_size);
  }
  RecordsetPtr AbrirTabela(const std::string& table, CursorType cursor, LockType lock) override {
    statements_->push_back("table: " + table);
    return real_->AbrirTabela(table, cursor, lock);
  }

 private:
  QLCConnPtr real_;
  Statements statements_;
};

std::string shown(const Variant& value) {
  if (value.is_missing()) return "-";
  return value.is_null() ? "null" : to_text(value);
}

class DoubledBase : public QLCBase {
 public:
  DoubledBase(QLCBasePtr real, std::shared_ptr<BaseDouble> given)
      : real_(std::move(real)), given_(std::move(given)) {}

  std::int32_t NovoOid() override { return real_->NovoOid(); }
  std::string CodificarSenha(const std::string& text, std::int32_t code) override {
    return real_->CodificarSenha(text, code);
  }
  std::int32_t IncluirItem(std::int32_t criador, const std::string& nome, std::int32_t cid,
                           std::int32_t origem, std::int32_t escopo, const Variant& criadoem,
                           const Variant& reservado, const Variant& responsavel,
                           const std::string& observacao, const std::string& codigo,
                           std::int32_t opcao) override {
    given_->calls.push_back(concat("IncluirItem(", criador, ",", nome, ",", cid, ",", origem, ",", escopo,
                                   ",", shown(criadoem), ",", shown(reservado), ",", shown(responsavel), ",",
                                   observacao, ",", codigo, ",", opcao, ")"));
    if (given_->new_item) return *given_->new_item;
    return real_->IncluirItem(criador, nome, cid, origem, escopo, criadoem, reservado, responsavel,
                              observacao, codigo, opcao);
  }
  std::int32_t AlterarItem(std::int32_t oid, std::int32_t alterador, const Variant& nome,
                           const Variant& escopo, const Variant& reservado, const Variant& observacao,
                           const Variant& reservado2) override {
    given_->calls.push_back(concat("AlterarItem(", oid, ",", alterador, ",", shown(nome), ",", shown(escopo),
                                   ",", shown(reservado), ",", shown(observacao), ",", shown(reservado2),
                                   ")"));
    return real_->AlterarItem(oid, alterador, nome, escopo, reservado, observacao, reservado2);
  }
  void ExcluirItem(const std::string& nome, const std::string& codigo, std::int32_t responsavel, Date quando,
                   std::int32_t aplicativo, std::int32_t cid, std::int32_t oid, std::int32_t opcao) override {
    given_->calls.push_back(concat("ExcluirItem(", nome, ",", codigo, ",", responsavel, ",", aplicativo, ",",
                                   cid, ",", oid, ",", opcao, ")"));
    real_->ExcluirItem(nome, codigo, responsavel, quando, aplicativo, cid, oid, opcao);
  }
  void RegistrarItem(std::int32_t codigo, std::int32_t opcao, std::int32_t oid) override {
    given_->calls.push_back(concat("RegistrarItem(", codigo, ",", opcao, ",", oid, ")"));
    real_->RegistrarItem(codigo, opcao, oid);
  }
  bool ClassificarItem(std::int32_t oid, std::int32_t categoria) override {
    if (given_->classifies && !given_->classifies(oid, categoria)) return false;
    return real_->ClassificarItem(oid, categoria);
  }
  bool IncluirAgrupamento(std::int32_t papel, std::int32_t grupo, std::int32_t item) override {
    if (given_->groups && !given_->groups(papel, grupo)) return false;
    return real_->IncluirAgrupamento(papel, grupo, item);
  }
  bool RelacionarItens(std::int32_t item, std::int32_t tipo, std::int32_t outro,
                       std::int32_t opcao) override {
    if (given_->relates) return *given_->relates;
    return real_->RelacionarItens(item, tipo, outro, opcao);
  }
  std::int32_t IncluirEndereco(std::int32_t item, std::int32_t cidade, const std::string& cep,
                               const std::string& bairro, const std::string& complemento,
                               const std::string& numero, const std::string& rua, const std::string& extra,
                               std::int32_t criador) override {
    return real_->IncluirEndereco(item, cidade, cep, bairro, complemento, numero, rua, extra, criador);
  }
  std::int32_t AlterarEndereco(std::int32_t oid, std::int32_t item, std::int32_t cidade,
                               const std::string& cep, const std::string& bairro,
                               const std::string& complemento, const std::string& numero,
                               const std::string& rua, const std::string& extra,
                               std::int32_t alterador) override {
    return real_->AlterarEndereco(oid, item, cidade, cep, bairro, complemento, numero, rua, extra, alterador);
  }
  std::string ColunaDoTipo(std::int32_t tipo) override { return real_->ColunaDoTipo(tipo); }

 private:
  QLCBasePtr real_;
  std::shared_ptr<BaseDouble> given_;
};

}  // namespace

StatementRecorder::StatementRecorder() : statements_(std::make_shared<std::vector<std::string>>()) {
  component::shared_conn();
  auto& conn = component::thread_state().conn;
  conn = std::make_shared<RecordingConn>(conn, statements_);
}

std::vector<std::string> StatementRecorder::take() { return std::exchange(*statements_, {}); }

std::shared_ptr<BaseDouble> double_base() {
  auto given = std::make_shared<BaseDouble>();
  component::shared_base();
  auto& base = component::thread_state().base;
  base = std::make_shared<DoubledBase>(base, given);
  return given;
}

}  // namespace pradelis::tests
