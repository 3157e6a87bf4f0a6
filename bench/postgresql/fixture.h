#pragma once

#include <memory>
#include <string>

#include "bench/contents.h"
#include "bench/postgresql/by_hand.h"
#include "component/crm.h"
#include "site/apartment.h"

namespace pradelis::bench::postgresql {

/// A new database on the server of scripts/with-postgres, which the component and the work by hand share,
/// each on a connection of its own. Commits do not wait for the disk, which would hide what is compared.
class Fixture {
 public:
  Fixture();
  ~Fixture();
  Fixture(const Fixture&) = delete;
  Fixture& operator=(const Fixture&) = delete;

  const std::string& connection_string() const { return settings_.connection_string; }
  Server& by_hand() { return *by_hand_; }
  /// A new object, as a page creates one for a request.
  component::CRMPtr crm() { return std::make_shared<component::CRM>(); }
  /// What the component wrote into the page since last asked.
  std::string take_written() { return apartment_->take_written(); }

 private:
  site::ApplicationSettings settings_;
  std::unique_ptr<site::Apartment> apartment_;
  std::unique_ptr<Server> by_hand_;
};

/// One subject each: they measure on the fixture and print their lines.
void measure_deals(Fixture& fixture);
void measure_visibility(Fixture& fixture);
void measure_category_tree(Fixture& fixture);
void measure_reading(Fixture& fixture);

}  // namespace pradelis::bench::postgresql
