#include "component/crm.h"

#include "component/thread_state.h"
#include "values/convert.h"

namespace pradelis::component {

namespace {

void configure_connection(Application& application) {
  shared_conn().set_ConnectionTimeout(to_int16(application.Value("dataconn_ConnectionTimeout")));
  shared_conn().set_CommandTimeout(to_int16(application.Value("dataconn_CommandTimeout")));
  shared_conn().set_ConnectionString(to_text(application.Value("dataconn_ConnectionString")));
}

/// The thread's shared object of a class, created on first use.
template <class Class>
std::shared_ptr<Class> shared_child(std::shared_ptr<Class>& holder) {
  if (!holder) holder = std::make_shared<Class>();
  return holder;
}

}  // namespace

CRM::CRM() {
  if (!thread_state().quelcor) Main();
  try {
    GetApplication();
    configure_connection(*thread_state().application);
  } catch (...) {
    // No destructor will run for this object, and the next one has to ask its own request's context.
    ReleaseIntrinsics();
    throw;
  }
  sql_server_dialect_ = "set language portuguese";
  oracle_dialect_ =
      "ALTER SESSION SET NLS_DATE_FORMAT = 'YYYY MM DD HH24:MI:SS' NLS_NUMERIC_CHARACTERS = ',.'";
  set_PValorNegocio(1);
}

CRM::~CRM() { ReleaseIntrinsics(); }

dataaccess::QLCConnPtr CRM::QLCConn() {
  shared_conn();
  return thread_state().conn;
}

dataaccess::QLCBasePtr CRM::QLCBase() {
  shared_base();
  return thread_state().base;
}

dataaccess::QLCDataPtr CRM::QLCData() {
  shared_data();
  return thread_state().data;
}

GrupoUsuariosPtr CRM::cGrupoUsuarios() { return shared_child(thread_state().grupo_usuarios); }

PessoaJuridicaPtr CRM::cPessoaJuridica() { return shared_child(thread_state().pessoa_juridica); }

VendedorPtr CRM::cVendedor() { return shared_child(thread_state().vendedor); }

void CRM::release_working() noexcept {
  working_.reset();
  working2_.reset();
}

}  // namespace pradelis::component
