#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "command/demo.h"
#include "command/progress.h"
#include "component/crm.h"
#include "values/date.h"

namespace pradelis::command {

/// Writes the demonstration's records through the component. Its choices repeat from run to run; days
/// are counted from today.
class DemoWriter {
 public:
  DemoWriter(component::CRM& crm, const DemoOptions& options, Progress& progress);

  /// Steps that `write` takes.
  static std::size_t steps(const DemoOptions& options);
  /// \param password  of all salespeople
  void write(const std::string& password);

 private:
  struct Company {
    std::int32_t id, owner;
    std::vector<std::int32_t> contacts;
  };

  void write_lists();
  void write_segments();
  void write_team(const std::string& password);
  void write_branches();
  void write_extra_fields();
  void write_company(int number);
  void write_contacts(Company& company);
  void write_extra_values(std::int32_t company);
  void write_file(std::int32_t company, std::int32_t owner);
  void write_deal(int number);
  void end_deal(std::int32_t deal, double value, Date day);
  void write_activities(const Company& company, std::int32_t deal, std::int32_t contact);
  void write_deletions();

  /// A number from 0 to `count` - 1.
  std::size_t pick(std::size_t count) { return random_() % count; }
  template <class List>
  const auto& pick_from(const List& list) {
    return list[pick(list.size())];
  }
  bool chance(int percent) { return pick(100) < static_cast<std::size_t>(percent); }
  Date day(int from_today) const;

  component::CRM& crm_;
  const DemoOptions& options_;
  Progress& progress_;
  std::mt19937 random_{20090};
  Date today_;

  std::vector<std::int32_t> cities_, roles_, reasons_, classes_, kinds_, groups_, people_, fields_,
      interests_;
  std::vector<std::pair<std::string, std::int32_t>> segments_;  ///< branch of trade and its category
  std::vector<Company> companies_;
};

}  // namespace pradelis::command
