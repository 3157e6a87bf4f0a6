#include "dataaccess/failures.h"

#include "dataaccess/tokens.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

constexpr std::size_t longest_shown = 160;

std::string_view what_failed(std::int32_t number) noexcept {
  switch (number) {
    case error_number::wrong_statement:
      return "Instrução inválida";
    case error_number::no_such_table:
      return "Tabela ou visão inexistente";
    case error_number::constraint_refused:
      return "Linha recusada por uma chave ou restrição";
    case error_number::timed_out:
      return "Tempo do comando esgotado";
    case error_number::changed_by_other:
      return "Linha alterada por outro usuário";
    case error_number::value_does_not_fit:
      return "Valor que não serve para a coluna";
    default:
      return "Falha do banco de dados";
  }
}

void cut_to_whole_letters(std::string& text, std::size_t size) {
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
  text.resize(size);
}

}  // namespace

std::string shown_statement(std::string_view statement) {
  std::string shown;
  std::size_t copied = 0;
  Tokens tokens(statement);
  for (Token token = tokens.next(); token.kind != TokenKind::End && shown.size() < longest_shown;
       token = tokens.next()) {
    const bool text = token.kind == TokenKind::Text || token.kind == TokenKind::PrefixedText ||
                      token.kind == TokenKind::Unended;
    const std::size_t begin = tokens.position(token);
    const std::size_t end = begin + token.text.size();
    shown.append(statement, copied, (text ? begin : end) - copied);
    if (text) shown += "'…'";
    copied = end;
  }
  if (shown.size() > longest_shown) {
    cut_to_whole_letters(shown, longest_shown);
    shown += "…";
  }
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return shown;
}

void raise_for_statement(const Error& failure, std::string_view statement) {
  raise(failure.number(),
        concat(what_failed(failure.number()), ": ", shown_statement(statement), ": ", failure.description()));
}

void raise_closed_recordset() {
  raise(error_number::closed_object, "A operação não é permitida: o recordset está fechado.");
}

void raise_closed_connection() {
  raise(error_number::closed_object, "A operação não é permitida: a conexão está fechada.");
}

void raise_no_current_row() {
  raise(error_number::no_current_row,
        "Não há registro atual: a posição está antes do primeiro ou depois do último registro, ou o registro "
        "atual foi excluído.");
}

void raise_no_such_field(std::string_view name) {
  raise(error_number::no_such_field, concat("O campo ", name, " não existe no recordset."));
}

void raise_read_only(std::string_view why) {
  raise(error_number::not_writable, concat("O recordset não permite alterações: ", why));
}

void raise_changed_by_other(std::string_view table) {
  raise(error_number::changed_by_other,
        concat("A linha da tabela ", table,
               " foi alterada ou excluída por outro usuário depois de lida; nada foi gravado."));
}

void check_statement_text(std::string_view statement) {
  if (statement.find('\0') != std::string_view::npos) {
    raise(error_number::wrong_statement, "A instrução contém um caractere nulo.");
  }
  if (!is_valid_utf8(statement)) {
    raise(error_number::wrong_statement, "A instrução não é um texto UTF-8 válido.");
  }
}

}  // namespace pradelis::dataaccess
