#include "dataaccess/live_connection.h"

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t most_plans = 200;
constexpr std::chrono::milliseconds trusted_for{20};
}  // namespace

const TablePlanPtr& LiveConnection::table_plan(const StatementText& text) {
  if (const auto found = plans_.find(text); found != plans_.end()) return found->second;
  TablePlanPtr plan = make_table_plan(text, statements_, *connection_);
  if (plans_.size() == most_plans) plans_.clear();
  const StatementText key{plan->text, text.hash};
  return plans_.emplace(key, std::move(plan)).first->second;
}

bool LiveConnection::usable() noexcept {
  if (connection_->lost()) return false;
  if (!traits_.remote || std::chrono::steady_clock::now() - last_use_ < trusted_for) return true;
  return connection_->alive();
}

}  // namespace pradelis::dataaccess
