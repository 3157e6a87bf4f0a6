#pragma once

// The driver manager's interface: unixODBC's and Windows' are the same, save for what Windows' headers
// need before them.
#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

namespace pradelis::dataaccess::odbc {

/// An attribute's number in the form in which the interface takes attributes.
inline SQLPOINTER attribute_value(SQLULEN value) noexcept { return reinterpret_cast<SQLPOINTER>(value); }

inline bool succeeded(SQLRETURN result) noexcept {
  return result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO;
}

/// Owns one handle of the driver manager.
class Handle {
 public:
  Handle() noexcept = default;
  Handle(SQLSMALLINT type, SQLHANDLE handle) noexcept : type_(type), handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { release(); }

  SQLHANDLE get() const noexcept { return handle_; }
  /// A new handle under `parent` in place of what was held; false when there is none to be had.
  bool allocate(SQLSMALLINT type, SQLHANDLE parent) noexcept {
    release();
    type_ = type;
    return succeeded(SQLAllocHandle(type, parent, &handle_));
  }
  void release() noexcept {
    if (handle_ != nullptr) SQLFreeHandle(type_, handle_);
    handle_ = nullptr;
  }

 private:
  SQLSMALLINT type_ = 0;
  SQLHANDLE handle_ = nullptr;
};

}  // namespace pradelis::dataaccess::odbc
