#include "site/bar_chart.h"
#include "site/context.h"
#include "site/deal_months.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::array states = {DealState::Open, DealState::Won, DealState::Lost};
/// How the sums of each state are called.
constexpr std::array sum_names = {"Previsto", "Ganho", "Perdido"};
constexpr std::int32_t months_before = 5;
constexpr std::int32_t months_moved = 6;

using Board = std::array<YearOfDeals, states.size()>;

std::string deal_count(std::int64_t count) { return count_text(count, "negócio", "negócios"); }

View sum_view(const MonthlyDeals& deals, std::size_t state) {
  const bool none = deals.count == 0;
  View view;
  view.set("what", sum_names[state]).set("sum", none ? "—" : money_text(deals.sum));
  return view.set("count", none ? std::string() : deal_count(deals.count));
}

View column_view(const MonthlyDeals& deals, std::size_t state) {
  View view = state_view(states[state]);
  view.set("sum", money_text(deals.sum)).set("count", deal_count(deals.count)).flag("due", false);
  std::vector<View> entries;
  for (const MonthlyDeals::Entry& deal : deals.largest) {
    View entry;
    entry.set("address", deal_address(deal.id)).set("name", deal.name).set("company", deal.company);
    entries.push_back(std::move(entry.set("value", money_text(deal.value))));
  }
  const std::int64_t more = deals.count - static_cast<std::int64_t>(entries.size());
  view.optional("more", more > 0 ? "e mais " + deal_count(more) : std::string());
  return view.flag("any", !entries.empty()).list("deals", std::move(entries));
}

/// One month of the board, or the deals without a date; nothing when it has no deals.
void add_month(std::vector<View>& months, const Board& board, std::size_t index, const std::string& name) {
  std::vector<View> cells;
  std::int64_t count = 0;
  for (std::size_t state = 0; state < states.size(); ++state) {
    if (index == months_read && states[state] != DealState::Open) continue;
    cells.push_back(column_view(board[state][index], state));
    count += board[state][index].count;
  }
  if (count == 0) return;
  View view;
  view.set("name", name).set("anchor", "mes-" + std::to_string(index)).list("cells", std::move(cells));
  months.push_back(std::move(view));
}

View numbers_row(const Board& board, std::size_t index, const std::string& name) {
  std::vector<View> cells;
  for (std::size_t state = 0; state < states.size(); ++state)
    cells.push_back(sum_view(board[state][index], state));
  return View().set("name", name).list("cells", std::move(cells));
}

View board_view(const Board& board, Month first) {
  std::vector<View> months;
  std::vector<View> numbers;
  std::vector<BarGroup> bars;
  for (std::size_t i = 0; i < months_read; ++i) {
    const Month month = first.plus(static_cast<std::int32_t>(i));
    add_month(months, board, i, month.name());
    numbers.push_back(numbers_row(board, i, month.name()));
    bars.push_back({month.short_name(), board[0][i].sum, board[1][i].sum});
  }
  add_month(months, board, months_read, "Sem data prevista");
  View view;
  view.flag("none", months.empty()).list("board", std::move(months)).list("months", std::move(numbers));
  return view.section("chart", bar_chart_view(bars));
}

void show_board(Context& context) {
  const Parameters& query = context.request().query;
  const Month first = parse_month(query.get("inicio"), Month::of(today()).plus(-months_before));
  const std::int32_t salesperson = parse_identifier(query.get("vendedor")).value_or(0);
  Board board;
  for (std::size_t i = 0; i < states.size(); ++i)
    board[i] = read_months(context, states[i], first, salesperson);

  View view = board_view(board, first);
  view.set("first", first.iso())
      .set("period", "De " + first.name() + " a " + first.plus(months_read - 1).name());
  const std::string filters = query.encode_without({"inicio"});
  const auto address = [&](Month month) {
    return "/negocios/quadro?inicio=" + month.iso() + (filters.empty() ? "" : "&" + filters);
  };
  view.set("earlier", address(first.plus(-months_moved))).set("later", address(first.plus(months_moved)));
  auto people = salesperson_views(context, salesperson);
  view.flag("team", people.size() > 1).list("people", std::move(people));
  context.show("deal_board", "Quadro de negócios", "negocios", std::move(view));
}

}  // namespace

void add_deal_board(Router& router) { router.get("/negocios/quadro", show_board); }

}  // namespace pradelis::site
