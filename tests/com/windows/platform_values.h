#pragma once

#include <string>
#include <string_view>

#include "com/platform.h"
#include "com/text.h"

namespace pradelis::test {

/// A string of the platform that is freed when it ends.
class Text {
 public:
  Text() = default;
  explicit Text(std::string_view text) : value_(com::new_bstr(text)) {}
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  ~Text() { SysFreeString(value_); }

  operator BSTR() const { return value_; }
  BSTR* operator&() { return &value_; }
  std::string utf8() const { return com::from_bstr(value_); }

 private:
  BSTR value_ = nullptr;
};

/// A variant of the platform that is cleared when it ends.
class Value : public VARIANT {
 public:
  Value() { VariantInit(this); }
  explicit Value(std::string_view text) : Value() {
    bstrVal = com::new_bstr(text);
    vt = VT_BSTR;
  }
  explicit Value(long number) : Value() {
    lVal = number;
    vt = VT_I4;
  }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  ~Value() { VariantClear(this); }

  /// A reference to this variable, as scripts hand their variables over.
  VARIANT reference() {
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_BYREF | VT_VARIANT;
    result.pvarVal = this;
    return result;
  }
  std::string text() const { return vt == VT_BSTR ? com::from_bstr(bstrVal) : "no text"; }
};

}  // namespace pradelis::test
