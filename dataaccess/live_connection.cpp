#include "dataaccess/live_connection.h"

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t most_plans = 200;
constexpr std::chrono::milliseconds trusted_for{20};
// The objects of one request are made one right after the other.
constexpr std::chrono::milliseconds just_now{5};
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
  if (!connection_->alive()) return false;
  note_use();
  return true;
}

void LiveConnection::distrust() noexcept {
  if (std::chrono::steady_clock::now() - last_use_ > just_now) last_use_ = {};
}

}  // namespace pradelis::dataaccess
