#pragma once

#include <string>
#include <vector>

#include "component/crm.h"
#include "tests/com/support/requests.h"
#include "tests/support/web_host.h"

namespace pradelis::test {

/// One visit of a page as this program makes it: the HTML between the page's tags comes from the page itself,
/// in pieces that are counted from 0 behind those of the file that all pages include; what the tags do is
/// done by calls of the component from C++.
class TwinPage {
 public:
  TwinPage(const std::vector<std::string>& common, std::vector<std::string> own, const PageRequest& request,
           tests::WebHost& host)
      : common_(common), own_(std::move(own)), request_(request), host_(host) {}

  const PageRequest& request() const { return request_; }
  bool receives_form() const { return request_.verb == "POST"; }
  /// A value of the form, without the blanks around it.
  std::string field(const std::string& name) const;
  /// A value of the address, likewise.
  std::string parameter(const std::string& name) const;

  /// A piece of the page, or of the included file.
  TwinPage& text(std::size_t piece);
  TwinPage& common_text(std::size_t piece);
  /// A value as the script writes it, or escaped for HTML.
  TwinPage& write(const Variant& value);
  TwinPage& escaped(const Variant& value);
  /// What the component has written to the page meanwhile.
  TwinPage& take_component();

  /// Sends the browser to another page; what was written does not count.
  void redirect(const std::string& address);
  void set_status(const std::string& status);

  std::string answer() const { return redirected_ ? head_ : head_ + html_; }

 private:
  const std::vector<std::string>& common_;
  std::vector<std::string> own_;
  const PageRequest& request_;
  tests::WebHost& host_;
  std::string head_;
  std::string html_;
  bool redirected_ = false;
};

/// The visitor of the pages: logged in when `information` holds what `Logar` gave.
struct Visitor {
  tests::WebHost& host;
  Variant information;

  bool logged_in() const { return information.is(VariantType::Array); }
  const Variant& element(std::size_t index) const { return information.get<Variant::Array>().at(index); }
};

/// Answers the request that `page` was made of. Raises a std::runtime_error for a page that it does not know.
void serve(TwinPage& page, Visitor& visitor);

}  // namespace pradelis::test
