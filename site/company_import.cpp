#include "site/company_import.h"

#include <algorithm>
#include <array>

#include "site/csv.h"
#include "site/reference.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// A field that columns are read into: its name in the forms, its label, and the headings that mean it.
struct ImportField {
  std::string_view name;
  const char* label;
  std::vector<const char*> headings;
};

constexpr std::string_view company_name = "nome";
constexpr std::string_view contact_name = "contato";

const std::vector<ImportField>& import_fields() {
  static const std::vector<ImportField> fields = {
      {company_name, "Empresa", {"EMPRESA", "NOME FANTASIA", "NOME", "FANTASIA"}},
      {"razao", "Razão social", {"RAZÃO SOCIAL", "RAZAO SOCIAL", "RAZÃO"}},
      {"situacao", "Situação", {"SITUAÇÃO", "SITUACAO"}},
      {"vendedor", "Vendedor", {"VENDEDOR", "RESPONSÁVEL"}},
      {"rua", "Rua", {"RUA", "ENDEREÇO", "ENDERECO", "LOGRADOURO"}},
      {"numero", "Número", {"NÚMERO", "NUMERO", "Nº"}},
      {"complemento", "Complemento", {"COMPLEMENTO"}},
      {"bairro", "Bairro", {"BAIRRO"}},
      {"cidade", "Cidade", {"CIDADE", "MUNICÍPIO", "MUNICIPIO"}},
      {"cep", "CEP", {"CEP"}},
      {"observacao", "Observação", {"OBSERVAÇÃO", "OBSERVACAO", "OBS"}},
      {contact_name, "Contato", {"CONTATO", "NOME DO CONTATO"}},
      {"cargo", "Cargo do contato", {"CARGO", "FUNÇÃO", "CARGO DO CONTATO"}},
  };
  return fields;
}

bool of_contact(const ImportField& field) { return field.name == contact_name || field.name == "cargo"; }

std::string column_field(const ImportField& field) { return "coluna_" + std::string(field.name); }

/// The column whose heading means the field, from 1 on; 0 for none. Earlier headings of the list count more.
std::int32_t guess_column(const CsvTable& table, const ImportField& field) {
  for (const char* heading : field.headings) {
    for (std::size_t column = 0; column < table.headings.size(); ++column) {
      if (to_upper(trim(table.headings[column])) == heading) return static_cast<std::int32_t>(column) + 1;
    }
  }
  return 0;
}

/// Puts the identifier of the option that a cell names into `typed`, or says what is wrong in the form.
std::string chosen(const std::vector<Option>& options, const std::string& text, std::string& reason) {
  std::string found;
  for (const Option& option : options) {
    if (to_upper(option.label) != to_upper(text)) continue;
    if (!found.empty()) reason = "Há mais de um com o nome “" + text + "”.";
    found = std::to_string(option.id);
  }
  if (found.empty()) reason = "“" + text + "” não está entre os que você pode escolher.";
  return found;
}

}  // namespace

Form import_columns_form(const CsvTable& table) {
  std::vector<Option> columns;
  for (std::size_t i = 0; i < table.headings.size(); ++i) {
    const std::string heading(trim(table.headings[i]));
    const auto number = static_cast<std::int32_t>(i) + 1;
    columns.push_back({number, heading.empty() ? "Coluna " + std::to_string(number) : heading});
  }
  Form form;
  for (const ImportField& field : import_fields()) {
    auto& choice =
        form.choice(column_field(field), field.label, columns).half().value(guess_column(table, field));
    if (field.name == company_name) choice.required();
  }
  return form;
}

CompanyImport::CompanyImport(Context& context, const CsvTable& table, const Form& columns)
    : context_(context),
      table_(table),
      company_form_(new_company_form(context)),
      contact_form_(contact_form(context)),
      situations_(company_situations()),
      people_(context.visible().salespeople()),
      roles_(entries(context.crm(), ReferenceList::Roles)) {
  for (const ImportField& field : import_fields())
    columns_[std::string(field.name)] = columns.id_of(column_field(field));
}

std::string CompanyImport::cell(const CsvRow& row, std::string_view field) const {
  const auto column = static_cast<std::size_t>(columns_.find(field)->second);
  return column == 0 ? std::string() : std::string(trim(plain_cell(row.cells[column - 1])));
}

CompanyImport::Answers CompanyImport::answers(const CsvRow& row) {
  Answers answers{company_form_, contact_form_};
  Parameters company;
  Parameters contact;
  std::map<std::string_view, std::string> reasons;
  // What is left out is what the empty form shows: a prospect of the visitor's own.
  const std::map<std::string_view, std::pair<const std::vector<Option>*, std::string>> choices = {
      {"situacao", {&situations_, company_form_.text_of("situacao")}},
      {"vendedor", {&people_, company_form_.text_of("vendedor")}},
      {"cargo", {&roles_, ""}}};
  for (const ImportField& field : import_fields()) {
    std::string text = cell(row, field.name);
    if (of_contact(field) && !text.empty()) answers.has_contact = true;
    if (const auto choice = choices.find(field.name); choice != choices.end()) {
      const auto& [options, missing] = choice->second;
      text = text.empty() ? missing : chosen(*options, text, reasons[field.name]);
    }
    const std::string_view name = field.name == contact_name ? "nome" : field.name;
    (of_contact(field) ? contact : company).add(std::string(name), text);
  }
  answers.company.read(company);
  answers.city = typed_city(context_, answers.company);
  if (answers.has_contact) answers.contact.read(contact);
  for (const auto& [field, reason] : reasons) {
    if (!reason.empty()) (field == "cargo" ? answers.contact : answers.company).refuse(field, reason);
  }
  return answers;
}

bool CompanyImport::exists(const std::string& name) {
  component::CRM& crm = context_.crm();
  return !single_value(crm, concat("select oid from pessoajuridica_r where UPPER(nome) = UPPER('",
                                   crm.PrepararVariavel(name), "')"))
              .is_null();
}

std::string CompanyImport::store(Answers& answers, Brought& company) {
  component::CRM& crm = context_.crm();
  std::int32_t id = company.id;
  const bool done = attempt_whole(crm, companies_row, answers.company, [&] {
    if (id == 0) id = register_company(context_, answers.company, answers.city);
    if (id == 0 || !answers.has_contact) return;
    crm.Cadastrar_Contato(context_.person(), answers.contact.text_of("nome"), answers.contact.id_of("cargo"),
                          id);
  });
  if (done) company.id = id;
  return answers.company.reasons();
}

ImportRow CompanyImport::take(const CsvRow& row, bool write) {
  ImportRow result{row.line, {}, {}, {}, 0};
  if (row.cells.size() != table_.headings.size()) {
    result.refusal =
        concat("Tem ", row.cells.size(), " colunas, e o cabeçalho tem ", table_.headings.size(), ".");
    return result;
  }
  result.company = cell(row, company_name);
  result.contact = cell(row, contact_name);
  Answers given = answers(row);
  std::string reasons = given.company.reasons();
  if (const std::string more = given.contact.reasons(); !more.empty()) {
    reasons += (reasons.empty() ? "Contato: " : " Contato: ") + more;
  }
  result.refusal = reasons;
  if (!reasons.empty()) return result;

  Brought company{row.line, 0, {}};
  for (const ImportField& field : import_fields()) {
    if (!of_contact(field) && field.name != company_name) company.cells.push_back(cell(row, field.name));
  }
  const std::string key = to_upper(result.company);
  if (const auto earlier = brought_.find(key); earlier != brought_.end()) {
    result.company_line = earlier->second.line;
    if (earlier->second.cells != company.cells) {
      result.refusal = concat("A empresa já está na linha ", earlier->second.line, " com outros dados.");
    } else if (!given.has_contact) {
      result.refusal = concat("Repete a linha ", earlier->second.line, ".");
    } else if (write) {
      result.refusal = store(given, earlier->second);
    }
    return result;
  }
  if (write) {
    result.refusal = store(given, company);
  } else if (exists(result.company)) {
    result.refusal = "Nome fantasia: Já Existe uma pessoa Jurídica Cadastrada com esse nome.";
  }
  if (result.refusal.empty()) brought_[key] = std::move(company);
  return result;
}

std::vector<ImportRow> CompanyImport::run(bool write) {
  brought_.clear();
  std::vector<ImportRow> rows;
  for (const CsvRow& row : table_.rows) rows.push_back(take(row, write));
  return rows;
}

}  // namespace pradelis::site
