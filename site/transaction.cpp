#include "site/transaction.h"

#include "component/crm.h"
#include "site/context.h"
#include "site/log.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// Runs `work` in a transaction on the record. True from it says that it wrote, or tried to.
bool run(component::CRM& crm, const RecordRow& record, Form& form, const std::function<bool()>& work) {
  return attempt(form, [&] {
    Transaction transaction(crm);
    transaction.lock(record);
    try {
      if (!work()) return;
      if (form.refused()) return transaction.undo();
      transaction.commit();
    } catch (const Error&) {
      transaction.undo();
      throw;
    }
  });
}

}  // namespace

Transaction::Transaction(component::CRM& crm) : crm_(crm) {
  try {
    execute("begin transaction");
    open_ = true;
  } catch (const Error& error) {
    if (error.number() != error_number::wrong_statement) throw;
  }
}

Transaction::~Transaction() {
  if (!open_) return;
  try {
    execute("rollback");
  } catch (const Error& error) {
    log_line("rollback: " + error.description());
  }
}

void Transaction::execute(const std::string& sql) { crm_.QLCConn()->Conexao()->Execute(sql); }

// The change changes nothing; engines that lock rows lock this one, the others the database.
void Transaction::lock(const RecordRow& record) {
  execute(concat("update ", record.table, " set oid = oid where oid = ", record.oid));
}

void Transaction::commit() {
  if (open_) execute("commit");
  open_ = false;
}

void Transaction::undo() {
  if (!open_) return;
  open_ = false;
  execute("rollback");
}

bool attempt_whole(component::CRM& crm, const RecordRow& record, Form& form,
                   const std::function<void()>& write) {
  return run(crm, record, form, [&] {
    write();
    return true;
  });
}

bool change_record(component::CRM& crm, const RecordRow& record, Form& form,
                   const std::function<Form()>& present, const std::function<void()>& write) {
  return run(crm, record, form, [&] {
    if (!form.is_current(present())) return false;
    write();
    return true;
  });
}

}  // namespace pradelis::site
