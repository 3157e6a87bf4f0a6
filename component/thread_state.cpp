#include "component/thread_state.h"

#include "component/grupo_usuarios.h"
#include "component/pessoa_juridica.h"
#include "component/vendedor.h"
#include "values/error.h"

namespace pradelis::component {

namespace {

dataaccess::Quelcor2008& root() {
  ThreadState& state = thread_state();
  if (!state.quelcor) raise(error_number::object_not_set);
  return *state.quelcor;
}

}  // namespace

ThreadState& thread_state() {
  thread_local ThreadState state;
  return state;
}

void reset_thread_state() { thread_state() = ThreadState{}; }

void Main() {
  ThreadState& state = thread_state();
  state.quelcor = dataaccess::new_quelcor();
  state.conn = state.quelcor->Conn();
  state.base = state.quelcor->Base();
}

dataaccess::QLCConn& shared_conn() {
  ThreadState& state = thread_state();
  if (!state.conn) state.conn = root().Conn();
  return *state.conn;
}

dataaccess::QLCBase& shared_base() {
  ThreadState& state = thread_state();
  if (!state.base) state.base = root().Base();
  return *state.base;
}

dataaccess::QLCData& shared_data() {
  ThreadState& state = thread_state();
  if (!state.data) state.data = root().Data();
  return *state.data;
}

}  // namespace pradelis::component
