#include "com/apartment.h"

#include <atomic>
#include <memory>

#include "com/module.h"
#include "com/web_adapters.h"
#include "component/thread_state.h"

namespace pradelis::com {
namespace {

std::atomic<long> locks = 0;  // class factories and objects that somebody holds, and requested locks
std::atomic<long> apartments = 0;
std::atomic<bool> pinned = false;  // while there are apartments, and until somebody asks after the last one

/// The platform's own place for a pointer of each thread: unlike C++'s it can still be read when the
/// library is told that a thread ends.
class ThreadSlot {
 public:
  ThreadSlot() : index_(TlsAlloc()) {}
  ThreadSlot(const ThreadSlot&) = delete;
  ThreadSlot& operator=(const ThreadSlot&) = delete;
  ~ThreadSlot() { TlsFree(index_); }

  Apartment* get() const noexcept { return static_cast<Apartment*>(TlsGetValue(index_)); }
  void set(Apartment* value) const noexcept { TlsSetValue(index_, value); }

 private:
  DWORD index_;
};
const ThreadSlot current;

void end_current() noexcept {
  delete current.get();
  current.set(nullptr);
  --apartments;
}

}  // namespace

ComObject* Apartment::find(const Object& object) const noexcept {
  const auto found = objects_.find(&object);
  return found == objects_.end() ? nullptr : found->second;
}

void Apartment::object_created(ComObject& object) {
  objects_.emplace(object.object().get(), &object);
  lock_library();
}

void Apartment::object_ends(ComObject& object) noexcept { objects_.erase(object.object().get()); }

void Apartment::object_ended() noexcept {
  let_go_when_idle();
  unlock_library();
}

void Apartment::let_go_when_idle() noexcept {
  if (!is_idle()) return;
  component::ReleaseIntrinsics();
  component::thread_state().app_server.reset();
}

Apartment& apartment() {
  if (!current.get()) {
    auto fresh = std::make_unique<Apartment>();
    component::set_app_server_factory(platform_app_server);
    current.set(fresh.release());
    ++apartments;
    if (!pinned.exchange(true)) pin_module();
  }
  return *current.get();
}

void thread_ends() noexcept {
  if (current.get() && current.get()->is_idle()) end_current();
}

void lock_library() noexcept { ++locks; }
void unlock_library() noexcept { --locks; }

bool library_can_unload() noexcept {
  if (locks != 0) return false;
  if (current.get()) {
    if (apartments != 1 || !current.get()->is_idle()) return false;
    component::reset_thread_state();
    end_current();
  }
  if (apartments != 0) return false;
  // A thread that ends cannot do this: the asker keeps the library loaded until he has the answer.
  if (pinned.exchange(false)) unpin_module();
  return true;
}

}  // namespace pradelis::com
