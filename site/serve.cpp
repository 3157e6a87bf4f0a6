#include "site/serve.h"

#include <pthread.h>

#include <csignal>
#include <cstdio>
#include <thread>

#include "component/crm.h"
#include "dataaccess/schema/description.h"
#include "site/apartment.h"
#include "site/database_sessions.h"
#include "site/host.h"
#include "site/rows.h"
#include "site/site.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// SIGINT and SIGTERM, kept from interrupting any thread that is started while this lives, and waited
/// for instead.
class StopSignals {
 public:
  StopSignals() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGINT);
    sigaddset(&signals_, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals_, &before_);
  }
  ~StopSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  void wait() {
    int signal = 0;
    sigwait(&signals_, &signal);
  }

 private:
  sigset_t signals_{}, before_{};
};

/// Why the database cannot be served with these sessions, null for those in memory; empty when it can.
std::string obstacle(const ApplicationSettings& settings, SessionStore* sessions) {
  try {
    Apartment apartment(settings);
    component::CRM crm;
    crm.OidEmpresaCorrente();
    const auto version = to_int32(single_value(crm, "select versao from instalacao where oid = 1"));
    if (version < dataaccess::schema::current_version) {
      return concat("Ele está na versão ", version, ", e este programa precisa da versão ",
                    dataaccess::schema::current_version, ".");
    }
    if (sessions != nullptr) sessions->team_version();
    return {};
  } catch (const Error& error) {
    return error.description();
  }
}

}  // namespace

int serve(const ServeOptions& options) {
  ApplicationSettings settings;
  settings.connection_string = options.database;
  std::unique_ptr<SessionStore> sessions;
  if (options.sessions_in_database) sessions = std::make_unique<DatabaseSessions>();
  if (const std::string reason = obstacle(settings, sessions.get()); !reason.empty()) {
    std::fprintf(stderr, "pradelis: o banco de dados não pode ser servido; execute `pradelis init`. %s\n",
                 reason.c_str());
    return 1;
  }
  StopSignals signals;
  Site site(settings, std::move(sessions));
  Host host(site, options);
  if (!host.bind()) {
    std::fprintf(stderr, "pradelis: não foi possível atender em %s, porta %d.\n", options.host.c_str(),
                 options.port);
    return 1;
  }
  std::thread listener([&] { host.run(); });
  std::printf("http://%s:%d/\n", options.host.c_str(), host.port());
  std::fflush(stdout);
  signals.wait();
  host.stop();
  listener.join();
  site.close();
  return 0;
}

}  // namespace pradelis::site
