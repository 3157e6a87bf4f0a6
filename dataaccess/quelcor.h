#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "dataaccess/connection.h"
#include "dataaccess/recordset.h"

/// The data-access library of the suite, as far as the component uses it.
namespace pradelis::dataaccess {

/// The thread's connection: settings, the live connection, and the two ways to open a recordset on it.
/// The live connection is opened by the first operation that needs it, and again by the next one
/// after it was lost.
class QLCConn : public Object {
 public:
  virtual std::int16_t ConnectionTimeout() const = 0;
  /// Seconds; 0 waits without limit.
  virtual void set_ConnectionTimeout(std::int16_t seconds) = 0;
  virtual std::int16_t CommandTimeout() const = 0;
  /// Seconds; 0 waits without limit. Counts from the next statement on.
  virtual void set_CommandTimeout(std::int16_t seconds) = 0;
  virtual const std::string& ConnectionString() const = 0;
  /// A string other than the present one makes the next operation open a connection to it.
  virtual void set_ConnectionString(const std::string& value) = 0;

  /// The live connection, open.
  virtual ConnectionPtr Conexao() = 0;
  /// Opens the live connection when it is closed. `mode` is 2 in all calls and has no other meaning.
  virtual void Abrir(std::int32_t mode) = 0;

  /// An open recordset on the result of `sql`: a snapshot for read-only static (and keyset, dynamic)
  /// cursors, streamed for read-only forward-only ones, updatable for every lock but read-only.
  /// `max_records` limits the rows; 0 does not. The two last arguments are 1 and 10 in all calls and
  /// change nothing.
  virtual RecordsetPtr AbrirRecordset(const std::string& sql, CursorType cursor, LockType lock,
                                      CursorLocation location, std::int32_t max_records,
                                      std::int32_t option = 1, std::int32_t page_size = 10) = 0;
  /// An updatable recordset on the whole table.
  virtual RecordsetPtr AbrirTabela(const std::string& table, CursorType cursor, LockType lock) = 0;
};
using QLCConnPtr = std::shared_ptr<QLCConn>;

/// Operations on the shared object model. Identifiers and codes are 32-bit integers. All work on the
/// thread's connection and raise the database's failures.
class QLCBase : public Object {
 public:
  /// A new identifier above 100000, unique in the database across processes; no `item` row is made.
  virtual std::int32_t NovoOid() = 0;
  /// The form in which passwords are stored. `code` is 11, the only encoding there is; others raise
  /// error 5.
  virtual std::string CodificarSenha(const std::string& text, std::int32_t code) = 0;

  /// Creates an `item` row and gives its new `oid`.
  /// \param criador        who creates it (`criadopor`)
  /// \param nome           its name
  /// \param cid            its class code
  /// \param origem         7 in all calls; no meaning of its own
  /// \param escopo         the item under which it is placed (`rescopo`)
  /// \param criadoem       creation time; omitted, Null or Empty: the server's current time
  /// \param reservado      omitted in all calls
  /// \param responsavel    a person's identifier, or -1 (True) for the creator
  /// \param observacao     free text
  /// \param codigo         code; empty for none
  /// \param opcao          0 in all calls
  virtual std::int32_t IncluirItem(std::int32_t criador, const std::string& nome, std::int32_t cid,
                                   std::int32_t origem, std::int32_t escopo, const Variant& criadoem,
                                   const Variant& reservado, const Variant& responsavel,
                                   const std::string& observacao, const std::string& codigo,
                                   std::int32_t opcao) = 0;
  /// Changes the name, scope and observation of an item, each only when given (not omitted), and
  /// records who changed it and when. Gives the item's `oid`. An unknown item raises 3021.
  virtual std::int32_t AlterarItem(std::int32_t oid, std::int32_t alterador, const Variant& nome,
                                   const Variant& escopo, const Variant& reservado, const Variant& observacao,
                                   const Variant& reservado2) = 0;
  /// Enters the item in `EXCLUIDO`, which takes it out of `item_r` and of the other live views.
  virtual void ExcluirItem(const std::string& nome, const std::string& codigo, std::int32_t responsavel,
                           Date quando, std::int32_t aplicativo, std::int32_t cid, std::int32_t oid,
                           std::int32_t opcao) = 0;
  /// Second step of registering a group; nothing is left to do in it here.
  virtual void RegistrarItem(std::int32_t codigo, std::int32_t opcao, std::int32_t oid) = 0;

  /// Places an item under a category. True when the row was written.
  virtual bool ClassificarItem(std::int32_t oid, std::int32_t categoria) = 0;
  /// Makes an item member of a group in a role. True when the row was written.
  virtual bool IncluirAgrupamento(std::int32_t papel, std::int32_t grupo, std::int32_t item) = 0;
  /// Relates two items (a row of `comunicacao`). True when the row was written.
  virtual bool RelacionarItens(std::int32_t item, std::int32_t tipo, std::int32_t outro,
                               std::int32_t opcao) = 0;

  /// Creates an address (an item with a row of `endereco`) and gives its `oid`.
  virtual std::int32_t IncluirEndereco(std::int32_t item, std::int32_t cidade, const std::string& cep,
                                       const std::string& bairro, const std::string& complemento,
                                       const std::string& numero, const std::string& rua,
                                       const std::string& extra, std::int32_t criador) = 0;
  /// Changes an address; gives its `oid`. An unknown address raises 3021.
  virtual std::int32_t AlterarEndereco(std::int32_t oid, std::int32_t item, std::int32_t cidade,
                                       const std::string& cep, const std::string& bairro,
                                       const std::string& complemento, const std::string& numero,
                                       const std::string& rua, const std::string& extra,
                                       std::int32_t alterador) = 0;

  /// The column of `aditivo` that holds values of an extra field's type: 1 text "svalor",
  /// 2 reference "NVALOR", 3 date "dtvalor", 4 list value "LSVALOR"; any other code is a text.
  virtual std::string ColunaDoTipo(std::int32_t tipo) = 0;
};
using QLCBasePtr = std::shared_ptr<QLCBase>;

class QLCData : public Object {
 public:
  /// Display text of a date (d/m/y, with time of day where there is one). The two options are 0 in
  /// all calls.
  virtual std::string DataParaTexto(Date date, std::int32_t option1, std::int32_t option2) = 0;
};
using QLCDataPtr = std::shared_ptr<QLCData>;

/// The library's entry object: hands out one object of each kind, the same at each call, all on one
/// thread and one connection.
class Quelcor2008 : public Object {
 public:
  virtual QLCConnPtr Conn() = 0;
  virtual QLCBasePtr Base() = 0;
  virtual QLCDataPtr Data() = 0;
};
using Quelcor2008Ptr = std::shared_ptr<Quelcor2008>;

/// A new entry object for the calling thread.
Quelcor2008Ptr new_quelcor();

/// Gives the form in which a text, login and password, is stored. It must be safe between single
/// quotes.
using PasswordEncoder = std::function<std::string(const std::string& text)>;

/// Replaces the password encoding of the whole process by a deployment's own; an empty function
/// restores the built-in one. Not to be called while another thread encodes.
void replace_password_encoder(PasswordEncoder encoder);

}  // namespace pradelis::dataaccess
