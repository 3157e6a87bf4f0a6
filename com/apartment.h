#pragma once

#include <cstddef>
#include <unordered_map>

#include "com/com_object.h"
#include "values/object.h"

namespace pradelis::com {

/// What the library keeps for one thread, beside the component's own state of it: which objects the
/// thread's callers hold. It exists from the first object on until the thread ends or the library is
/// about to be unloaded.
class Apartment {
 public:
  /// Keeps what the apartment holds while an object is being created, whether it comes to be or not.
  class Use {
   public:
    explicit Use(Apartment& apartment) noexcept : apartment_(apartment) { ++apartment_.uses_; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() {
      --apartment_.uses_;
      apartment_.let_go_when_idle();
    }

   private:
    Apartment& apartment_;
  };

  /// The object that callers hold for `object`; null when nobody does.
  ComObject* find(const Object& object) const noexcept;

  void object_created(ComObject& object);
  /// Nobody holds `object` any longer; it is about to be destroyed.
  void object_ends(ComObject& object) noexcept;
  /// It is destroyed.
  void object_ended() noexcept;

  bool is_idle() const noexcept { return objects_.empty() && uses_ == 0; }

 private:
  /// After the thread's last object nothing of the platform is held, so that the thread may leave the
  /// platform whenever it likes.
  void let_go_when_idle() noexcept;

  std::unordered_map<const Object*, ComObject*> objects_;
  std::size_t uses_ = 0;
};

/// The calling thread's apartment, which begins now if there is none. It tells the component where the
/// thread gets its web objects.
Apartment& apartment();

/// To be called as the calling thread ends: its apartment goes, unless callers still hold objects of it.
/// The component's state of the thread ends by itself.
void thread_ends() noexcept;

/// A lock on the library, by a class factory's holder or by request.
void lock_library() noexcept;
void unlock_library() noexcept;

/// Whether nobody needs the library any longer: no object, no lock, and no apartment of another thread.
/// The calling thread's own apartment is ended then.
bool library_can_unload() noexcept;

}  // namespace pradelis::com
