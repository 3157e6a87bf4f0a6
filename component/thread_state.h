#pragma once

#include <functional>
#include <string>

#include "component/web_objects.h"
#include "dataaccess/quelcor.h"

namespace pradelis::component {

class GrupoUsuarios;
class PessoaJuridica;
class Vendedor;

/// What all objects of one thread share. References are empty until something fills them.
struct ThreadState {
  dataaccess::Quelcor2008Ptr quelcor;
  dataaccess::QLCConnPtr conn;
  dataaccess::QLCBasePtr base;
  dataaccess::QLCDataPtr data;

  std::shared_ptr<GrupoUsuarios> grupo_usuarios;
  std::shared_ptr<PessoaJuridica> pessoa_juridica;
  std::shared_ptr<Vendedor> vendedor;

  ApplicationPtr application;
  ResponsePtr response;
  SessionPtr session;
  ObjectPtr server;   ///< nothing fills it
  ObjectPtr request;  ///< nothing fills it

  std::string last_message;  ///< the last business message; nothing reads it

  std::function<AppServerPtr()> app_server_factory;
  AppServerPtr app_server;
};

/// The state of the calling thread. It lives as long as the thread.
ThreadState& thread_state();

/// Ends what the calling thread shares: connection, library objects, children. For hosts that end or
/// reuse a thread, and for tests; no object of the component may be alive on the thread.
void reset_thread_state();

/// Creates the data-access library's root object, and asks it for its connection and base objects.
void Main();

/// Each fills its holder from the object context of the thread, unless it is filled already.
/// Raise error 429 when the host has supplied no `AppServer`, error 13 when the context's item is not
/// what its name says, and whatever the context raises.
void GetApplication();
void GetResponse();
void GetSession();

/// Empties the holders of the web objects.
void ReleaseIntrinsics() noexcept;

/// The thread's connection object, fetched from the library when the holder is empty; likewise the
/// base and the data object.
dataaccess::QLCConn& shared_conn();
dataaccess::QLCBase& shared_base();
dataaccess::QLCData& shared_data();

}  // namespace pradelis::component
