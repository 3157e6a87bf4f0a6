#include "dataaccess/quelcor.h"

#include "dataaccess/base.h"
#include "dataaccess/thread_connection.h"

namespace pradelis::dataaccess {
namespace {

class Library final : public Quelcor2008 {
 public:
  QLCConnPtr Conn() override {
    if (!conn_) conn_ = new_thread_connection();
    return conn_;
  }
  QLCBasePtr Base() override {
    if (!base_) base_ = new_base(Conn());
    return base_;
  }
  QLCDataPtr Data() override {
    if (!data_) data_ = new_data();
    return data_;
  }

 private:
  QLCConnPtr conn_;
  QLCBasePtr base_;
  QLCDataPtr data_;
};

}  // namespace

Quelcor2008Ptr new_quelcor() { return std::make_shared<Library>(); }

}  // namespace pradelis::dataaccess
