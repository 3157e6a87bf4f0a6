#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "site/form.h"

namespace pradelis::component {
class CRM;
}

namespace pradelis::site {

/// The row that stands for a record while it is changed.
struct RecordRow {
  const char* table;  ///< one whose key is `oid`
  std::int32_t oid;
};

/// What happens on the thread's connection while it lives happens wholly or not at all: what was not
/// committed is taken back at its end. One at a time on a thread. An engine that is not told by
/// "begin transaction" works as without one.
class Transaction {
 public:
  explicit Transaction(component::CRM& crm);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Waits for whoever is changing the record, and keeps others from it until the end. To be called first.
  void lock(const RecordRow& record);
  void commit();
  /// Takes back what was written so far, after a call of the component failed.
  void undo();

 private:
  void execute(const std::string& sql);

  component::CRM& crm_;
  bool open_ = false;
};

/// Runs `write` wholly or not at all while nobody else can change the record. As with `attempt`, refusals and
/// failures go into the form; what was written until then is taken back. True when all is written.
bool attempt_whole(component::CRM& crm, const RecordRow& record, Form& form,
                   const std::function<void()>& write);

/// As above, for a record that somebody may have changed since it was shown.
/// \param present  the form as it would be asked now, guarded: when it is not the one that was answered,
///                 nothing is written and the form says so
bool change_record(component::CRM& crm, const RecordRow& record, Form& form,
                   const std::function<Form()>& present, const std::function<void()>& write);

}  // namespace pradelis::site
