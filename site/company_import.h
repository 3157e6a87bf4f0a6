#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "site/company_forms.h"
#include "site/csv_reader.h"

/// Companies with contacts from a table, such as the one that the list of companies exports: a row for each
/// company, or one for each of its contacts.
namespace pradelis::site {

/// Which column holds what, guessed from the headings.
Form import_columns_form(const CsvTable& table);

/// What becomes of a row.
struct ImportRow {
  std::size_t line = 0;
  std::string company, contact;
  std::string refusal;           ///< why nothing of it is written; empty when it is
  std::size_t company_line = 0;  ///< of the earlier row that has the company; 0 when this one brings it
};

class CompanyImport {
 public:
  /// \param columns  an answered `import_columns_form`
  CompanyImport(Context& context, const CsvTable& table, const Form& columns);

  /// What would become of the rows.
  std::vector<ImportRow> check() { return run(false); }
  /// Writes them: each row, company and contact, wholly or not at all.
  std::vector<ImportRow> store() { return run(true); }

 private:
  /// A company that a row of the file has brought.
  struct Brought {
    std::size_t line = 0;
    std::int32_t id = 0;  ///< 0 while nothing is written
    std::vector<std::string> cells;
  };
  struct Answers {
    Form company, contact;
    bool has_contact = false;
    std::int32_t city = 0;
  };

  std::vector<ImportRow> run(bool write);
  ImportRow take(const CsvRow& row, bool write);
  Answers answers(const CsvRow& row);
  std::string cell(const CsvRow& row, std::string_view field) const;
  bool exists(const std::string& name);
  std::string store(Answers& answers, Brought& company);

  Context& context_;
  const CsvTable& table_;
  std::map<std::string, std::int32_t, std::less<>> columns_;  // by field, from 1 on; 0 for none
  Form company_form_, contact_form_;
  std::vector<Option> situations_, people_, roles_;
  std::map<std::string, Brought> brought_;  // by name in capitals
};

}  // namespace pradelis::site
