#pragma once

#include <memory>
#include <string>

#include "site/serve.h"

namespace pradelis::site {

class Site;

/// Speaks HTTP for a site. Each of its threads serves one request at a time.
class Host {
 public:
  Host(Site& site, const ServeOptions& options);
  ~Host();

  /// Takes the address. False when it is not to be had.
  bool bind();
  /// The port taken.
  int port() const;
  /// Answers requests until `stop`. Requests under way are finished.
  void run();
  /// Makes `run` end; to be called from another thread.
  void stop();

 private:
  struct Server;
  std::unique_ptr<Server> server_;
};

}  // namespace pradelis::site
