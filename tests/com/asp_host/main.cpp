#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "com/text.h"
#include "tests/com/asp_host/script_engine.h"
#include "tests/com/support/page_objects.h"
#include "tests/com/support/page_text.h"
#include "tests/com/support/requests.h"

// asp_host PAGES REQUESTS ANSWERS: serves pages of a web application to one visitor.
//
// REQUESTS is a file as requests.h describes it; the answer to each page goes into the folder ANSWERS, as
// 1.html, 2.html, ... The program ends with 1 when a page fails.

namespace {

using namespace pradelis;

test::FormFields wide(const test::Fields& fields) {
  test::FormFields result;
  for (const auto& [name, value] : fields) result.emplace_back(com::to_utf16(name), com::to_utf16(value));
  return result;
}

class Site {
 public:
  Site(std::string folder, std::string answers) : folder_(std::move(folder)), answers_(std::move(answers)) {}

  /// The objects of the page that is served.
  test::PageObjects& page() { return page_; }

  bool obey(const test::PageRequest& request) {
    if (request.verb == "APPLICATION") {
      page_.application->set_text(com::to_utf16(request.name), com::to_utf16(request.value));
      return true;
    }
    return serve(request);
  }

 private:
  bool serve(const test::PageRequest& asked) {
    *page_.response.receiver() = new test::Response;
    com::Reference<test::Request> request;
    com::Reference<test::Server> server;
    *request.receiver() = new test::Request(com::to_utf16(asked.verb), wide(asked.query), wide(asked.form));
    *server.receiver() = new test::Server;
    const std::string script = test::script_of(test::parts_of(test::read_page(folder_, asked.name)));
    const test::ScriptOutcome outcome =
        test::run_script(com::to_utf16(script), {{L"Application", page_.application.get()},
                                                 {L"Session", page_.session.get()},
                                                 {L"Response", page_.response.get()},
                                                 {L"Request", request.get()},
                                                 {L"Server", server.get()}});
    write_answer();
    if (outcome.failure.empty() || page_.response->ended) return true;
    std::fprintf(stderr, "%s: %s\n", asked.name.c_str(), com::to_utf8(outcome.failure).c_str());
    return false;
  }

  void write_answer() {
    const test::Response& response = *page_.response.get();
    std::ofstream file(answers_ + "/" + std::to_string(++served_) + ".html", std::ios::binary);
    if (!response.redirect.empty()) {
      file << "Location: " << com::to_utf8(response.redirect) << "\n";
      return;
    }
    if (!response.status.empty()) file << "Status: " << com::to_utf8(response.status) << "\n";
    file << com::to_utf8(response.text);
  }

  std::string folder_;
  std::string answers_;
  test::PageObjects page_;
  int served_ = 0;
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("asp_host PAGES REQUESTS ANSWERS\n", stderr);
    return 2;
  }
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  bool all_served = true;
  try {
    static Site site(arguments[1], arguments[3]);
    if (FAILED(test::register_app_server(site.page()))) {
      throw std::runtime_error("the application server cannot be registered");
    }
    std::ifstream requests(arguments[2]);
    if (!requests) throw std::runtime_error("no requests");
    for (const test::PageRequest& request : test::read_requests(requests)) {
      all_served = site.obey(request) && all_served;
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    all_served = false;
  }
  std::fflush(nullptr);
  // The platform's own end would call objects of this program that are gone by then.
  ExitProcess(all_served ? 0 : 1);
}
