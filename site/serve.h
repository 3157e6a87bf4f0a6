#pragma once

#include <string>

namespace pradelis::site {

struct ServeOptions {
  /// Connection string of an initialised database.
  std::string database;
  /// Address to listen on. Others than the loopback are reached from the network without encryption:
  /// put a proxy that speaks TLS in front.
  std::string host = "127.0.0.1";
  /// 0 takes a free port; the address printed tells which.
  int port = 8080;
  /// Requests served at the same time; 0 chooses by the machine.
  int threads = 0;
  /// A proxy stands in front: its X-Forwarded-For and X-Forwarded-Proto are believed, so that logins
  /// are throttled by the visitor's own address and cookies travel encrypted only.
  bool behind_proxy = false;
  /// Who is logged in is kept in the database, where other hosts find it and where it outlives this
  /// process; else in the memory of this process.
  bool sessions_in_database = false;
};

/// Serves the site until SIGINT or SIGTERM, then finishes the requests under way. Prints the address
/// once it accepts connections. Result: the process's exit status, 0 after a clean stop; 1, with a
/// message on standard error, when the database or the address cannot be used.
int serve(const ServeOptions& options);

}  // namespace pradelis::site
