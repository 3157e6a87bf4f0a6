#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/by_hand.h"
#include "bench/contents.h"
#include "component/crm.h"

namespace pradelis::bench {

/// Rows of the table that rows are appended to.
constexpr std::int32_t classifications = 1'000'000;

/// Two equal databases in a temporary folder: one for the component, one for the work by hand.
/// The calling thread's component is set up on the first.
class Fixture {
 public:
  Fixture();
  ~Fixture();
  Fixture(const Fixture&) = delete;
  Fixture& operator=(const Fixture&) = delete;

  Database& by_hand() { return *by_hand_; }
  /// A new object, as a page creates one for a request.
  component::CRMPtr crm() { return std::make_shared<component::CRM>(); }
  /// What the component wrote into the page since it was last forgotten.
  const std::string& written() const;
  /// Keeps the page's memory for the next one.
  void forget_written();

 private:
  std::filesystem::path folder_;
  std::unique_ptr<Database> by_hand_;
};

}  // namespace pradelis::bench
