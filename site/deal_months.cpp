#include "site/deal_months.h"

#include "site/identifiers.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::array month_names = {"janeiro", "fevereiro", "março",    "abril",   "maio",     "junho",
                                    "julho",   "agosto",    "setembro", "outubro", "novembro", "dezembro"};
constexpr std::int32_t first_year = 1900;
constexpr std::int32_t last_year = 2100;

std::string two_digits(std::int32_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

/// The last second before a month, as a literal that every engine takes for a date, and that sorts among
/// dates kept as texts.
std::string before(Month month) { return "'" + iso_day(Date{month.first_day().serial - 1}) + "T23:59:59'"; }

struct Columns {
  const char* date;
  const char* value;
};

Columns columns_of(DealState state) {
  switch (state) {
    case DealState::Open:
      return {"n.dataprovavel", "n.valorprovavel"};
    case DealState::Won:
      return {"n.fechamento", "n.valorfechamento"};
    default:
      return {"n.fechamento", "n.valorprovavel"};
  }
}

/// The number of the month that a deal belongs to, as an expression.
std::string month_number(const char* date, Month first) {
  std::string text = "case";
  if (std::string_view(date) == "n.dataprovavel")
    text += concat(" when ", date, " is null then ", months_read);
  for (std::int32_t i = months_read - 1; i > 0; --i)
    text += concat(" when ", date, " > ", before(first.plus(i)), " then ", i);
  return text + " else 0 end";
}

/// A statement of the deals with their months, to be used as a table.
std::string deals_with_months(Context& context, DealState state, Month first, std::int32_t salesperson) {
  const auto [date, value] = columns_of(state);
  const bool open = state == DealState::Open;
  const std::string visible =
      context.visible().deals({open, state == DealState::Won, state == DealState::Lost});
  std::string condition =
      concat(date, " > ", before(first), " and ", date, " <= ", before(first.plus(months_read)));
  if (open) condition = concat("((", condition, ") or ", date, " is null)");
  if (state == DealState::Won) condition += " and n.rmotivo is null";
  if (salesperson != 0) condition += concat(" and n.rvendedor = ", salesperson);
  return concat("select n.oid as oid, i.nome as negocio, c.nome as empresa, ", value, " as valor, ",
                month_number(date, first), " as mes", deal_sources, " where n.oid in (", visible, ") and ",
                condition);
}

}  // namespace

Month Month::plus(std::int32_t months) const {
  const std::int32_t count = year * 12 + month - 1 + months;
  return {count / 12, count % 12 + 1};
}

Date Month::first_day() const { return make_date({year, month, 1, 0, 0, 0, 0}); }

std::string Month::name() const {
  return std::string(month_names[static_cast<std::size_t>(month - 1)]) + " de " + std::to_string(year);
}

std::string Month::short_name() const {
  // The first three letters of every name are one byte each.
  return std::string(month_names[static_cast<std::size_t>(month - 1)]).substr(0, 3) + "/" +
         two_digits(year % 100);
}

std::string Month::iso() const { return std::to_string(year) + "-" + two_digits(month); }

Month Month::of(Date date) {
  const DateParts parts = parts_of(date);
  return {parts.year, parts.month};
}

Month parse_month(std::string_view text, Month otherwise) {
  if (text.size() != 7 || text[4] != '-' || text[5] > '1') return otherwise;
  const auto year = parse_identifier(text.substr(0, 4));
  const auto month = parse_identifier(text[5] == '0' ? text.substr(6) : text.substr(5));
  if (!year || !month || *year < first_year || *year > last_year || *month > 12) return otherwise;
  return {*year, *month};
}

YearOfDeals read_months(Context& context, DealState state, Month first, std::int32_t salesperson) {
  YearOfDeals year;
  const std::string deals = deals_with_months(context, state, first, salesperson);
  each_row(context.crm(), concat("select mes, count(*), sum(valor) from (", deals, ") t group by mes"), 0,
           [&](const Row& row) {
             MonthlyDeals& month = year.at(static_cast<std::size_t>(row.id(0)));
             month.count = to_int64(row.value(1));
             month.sum = row.number(2);
           });
  each_row(
      context.crm(),
      concat("select oid, negocio, empresa, valor, mes from (select t.oid, t.negocio, t.empresa, t.valor,"
             " t.mes, row_number() over (partition by t.mes order by t.valor desc, t.oid) as lugar from (",
             deals, ") t) m where lugar <= ", MonthlyDeals::shown, " order by mes, lugar"),
      0, [&](const Row& row) {
        year.at(static_cast<std::size_t>(row.id(4)))
            .largest.push_back({row.id(0), row.text(1), row.text(2), row.number(3)});
      });
  return year;
}

}  // namespace pradelis::site
