#include "site/company_import.h"
#include "site/format.h"
#include "site/pages/pages.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::size_t largest_csv = 2 * 1024 * 1024;
/// Rows without a problem that a preview shows; those with one show all.
constexpr std::size_t good_rows_shown = 50;

const std::vector<Link>& companies_trail() {
  static const std::vector<Link> trail = {{"/empresas", "Empresas"}};
  return trail;
}

Form upload_form() {
  Form form;
  form.file("arquivo", "Arquivo CSV")
      .hint("Até 2 MB e 5.000 linhas, em UTF-8 ou Windows-1252. A primeira linha dá nome às colunas.");
  return form;
}

void show_upload(Context& context, const Form& form) {
  context.show_form(form,
                    {"Importar empresas", "empresas", "Conferir", companies_trail(),
                     "Empresas e contatos de uma planilha salva como CSV, como a que a lista exporta. Nada é"
                     " gravado antes de você conferir."});
}

void ask_file(Context& context) { show_upload(context, upload_form()); }

/// The text that was sent: in a file, or again by the preview. Throws CsvError.
std::string sent_text(Context& context) {
  const Request& request = context.request();
  for (const Upload& upload : request.uploads) {
    if (upload.content.size() > largest_csv)
      throw CsvError{"O arquivo tem mais de 2 MB. Divida-o em partes."};
    return csv_text(upload.content);
  }
  const std::string& text = request.form.get("texto");
  if (text.empty()) throw CsvError{"Escolha um arquivo."};
  return text;
}

View row_view(const ImportRow& row, bool done) {
  View view;
  view.set("line", std::to_string(row.line)).set("company", row.company).set("contact", row.contact);
  view.optional("refusal", row.refusal);
  std::string what = row.contact.empty() ? "Nova empresa" : "Nova empresa e contato";
  if (row.company_line != 0) what = concat("Contato da empresa da linha ", row.company_line);
  return view.set("what", done ? "Gravado: " + what : what);
}

/// The figures and rows of a preview or of a report.
void add_rows(View& view, const std::vector<ImportRow>& rows, bool done) {
  std::size_t refused = 0;
  std::size_t companies = 0;
  std::size_t contacts = 0;
  std::vector<View> views;
  for (const ImportRow& row : rows) {
    if (!row.refusal.empty()) {
      ++refused;
    } else {
      companies += row.company_line == 0 ? 1 : 0;
      contacts += row.contact.empty() ? 0 : 1;
    }
    if (!row.refusal.empty() || views.size() < refused + good_rows_shown)
      views.push_back(row_view(row, done));
  }
  const auto number = [](std::size_t count) { return static_cast<std::int64_t>(count); };
  view.set("companies", count_text(number(companies), "empresa", "empresas"));
  view.set("contacts", count_text(number(contacts), "contato", "contatos"));
  view.set("refused_rows", count_text(number(refused), "linha recusada", "linhas recusadas"));
  view.flag("any", companies + contacts > 0).flag("some_left_out", views.size() < rows.size());
  view.list("rows", std::move(views));
}

void take_file(Context& context) {
  std::string text;
  CsvTable table;
  try {
    text = sent_text(context);
    table = read_csv(text);
  } catch (const CsvError& error) {
    Form form = upload_form();
    form.refuse("arquivo", error.message);
    return show_upload(context, form);
  }
  const Parameters& posted = context.request().form;
  Form columns = import_columns_form(table);
  const bool answered = !posted.get("passo").empty();
  const bool right = !answered || columns.read(posted);
  const bool done = answered && right && posted.get("passo") == "importar";
  View view = columns.view();
  std::vector<ImportRow> rows;
  if (right) {
    CompanyImport import(context, table, columns);
    rows = done ? import.store() : import.check();
  } else {
    context.response().status = 422;
  }
  add_rows(view, rows, done);
  view.set("text", text).flag("done", done);
  context.show("company_import", done ? "Importação feita" : "Conferir importação", "empresas",
               std::move(view));
}

}  // namespace

void add_import_pages(Router& router) {
  router.get("/empresas/importar", ask_file);
  router.post("/empresas/importar", take_file);
}

}  // namespace pradelis::site
