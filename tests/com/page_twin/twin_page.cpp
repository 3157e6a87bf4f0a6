#include "tests/com/page_twin/twin_page.h"

#include "values/convert.h"
#include "values/text.h"

namespace pradelis::test {

std::string TwinPage::field(const std::string& name) const {
  return std::string(trim(value_of(request_.form, name)));
}

std::string TwinPage::parameter(const std::string& name) const {
  return std::string(trim(value_of(request_.query, name)));
}

TwinPage& TwinPage::text(std::size_t piece) {
  html_ += own_.at(piece);
  return *this;
}

TwinPage& TwinPage::common_text(std::size_t piece) {
  html_ += common_.at(piece);
  return *this;
}

TwinPage& TwinPage::write(const Variant& value) {
  append_text(html_, value);
  return *this;
}

TwinPage& TwinPage::escaped(const Variant& value) {
  const std::string plain = concat(value);
  for (const char c : plain) {
    switch (c) {
      case '&':
        html_ += "&amp;";
        break;
      case '<':
        html_ += "&lt;";
        break;
      case '>':
        html_ += "&gt;";
        break;
      case '"':
        html_ += "&quot;";
        break;
      default:
        html_ += c;
    }
  }
  return *this;
}

TwinPage& TwinPage::take_component() {
  html_ += host_.take_written();
  return *this;
}

void TwinPage::redirect(const std::string& address) {
  head_ = "Location: " + address + "\n";
  redirected_ = true;
}

void TwinPage::set_status(const std::string& status) { head_ = "Status: " + status + "\n"; }

}  // namespace pradelis::test
