#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "com/text.h"
#include "tests/com/asp_host/page_script.h"
#include "tests/com/asp_host/script_engine.h"
#include "tests/com/support/page_objects.h"

// asp_host PAGES REQUESTS ANSWERS: serves pages of a web application to one visitor.
//
// Each line of the file REQUESTS is one of
//   APPLICATION name=value        a variable of the application
//   GET page.asp?name=value&...   a page; its HTML goes into the folder ANSWERS, as 1.html, 2.html, ...
//   POST page.asp name=value&...  likewise
// The program ends with 1 when a page fails.

namespace {

using namespace pradelis;

std::wstring url_decoded(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size()) {
      bytes += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      bytes += text[i] == '+' ? ' ' : text[i];
    }
  }
  return com::to_utf16(bytes);
}

test::FormFields fields_of(const std::string& text) {
  test::FormFields fields;
  std::istringstream pieces(text);
  for (std::string piece; std::getline(pieces, piece, '&');) {
    const std::size_t equals = piece.find('=');
    const std::string value = equals == std::string::npos ? "" : piece.substr(equals + 1);
    fields.emplace_back(url_decoded(piece.substr(0, equals)), url_decoded(value));
  }
  return fields;
}

/// Splits a text at the first separator; the second piece is empty when there is none.
std::pair<std::string, std::string> split_at(const std::string& text, char separator) {
  const std::size_t place = text.find(separator);
  if (place == std::string::npos) return {text, {}};
  return {text.substr(0, place), text.substr(place + 1)};
}

class Site {
 public:
  Site(std::wstring folder, std::string answers) : folder_(std::move(folder)), answers_(std::move(answers)) {}

  /// The objects of the page that is served.
  test::PageObjects& page() { return page_; }

  bool obey(const std::string& line) {
    const auto [verb, rest] = split_at(line, ' ');
    if (verb == "APPLICATION") {
      const auto [name, value] = split_at(rest, '=');
      page_.application->set_text(com::to_utf16(name), com::to_utf16(value));
      return true;
    }
    const auto [address, form] = split_at(rest, ' ');
    const auto [name, query] = split_at(address, '?');
    return serve(com::to_utf16(name), fields_of(query), fields_of(form));
  }

 private:
  bool serve(const std::wstring& name, test::FormFields query, test::FormFields form) {
    *page_.response.receiver() = new test::Response;
    com::Reference<test::Request> request;
    com::Reference<test::Server> server;
    *request.receiver() = new test::Request(std::move(query), std::move(form));
    *server.receiver() = new test::Server;
    const test::ScriptOutcome outcome = test::run_script(test::script_of_page(test::read_page(folder_, name)),
                                                         {{L"Application", page_.application.get()},
                                                          {L"Session", page_.session.get()},
                                                          {L"Response", page_.response.get()},
                                                          {L"Request", request.get()},
                                                          {L"Server", server.get()}});
    write_answer();
    if (outcome.failure.empty() || page_.response->ended) return true;
    std::fprintf(stderr, "%s: %s\n", com::to_utf8(name).c_str(), com::to_utf8(outcome.failure).c_str());
    return false;
  }

  void write_answer() {
    std::ofstream file(answers_ + "\\" + std::to_string(++served_) + ".html", std::ios::binary);
    if (!page_.response->redirect.empty())
      file << "Location: " << com::to_utf8(page_.response->redirect) << "\n";
    file << com::to_utf8(page_.response->text);
  }

  std::wstring folder_;
  std::string answers_;
  test::PageObjects page_;
  int served_ = 0;
};

/// The page's objects are what a class of the platform's name leads to, in this program alone.
void register_app_server(Site& site) {
  CLSID class_id;
  DWORD registration = 0;
  IClassFactory& factory = test::app_server_factory([&site] { return new test::AppServer(site.page()); });
  if (FAILED(CLSIDFromString(test::app_server_class, &class_id)) ||
      FAILED(CoRegisterClassObject(class_id, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                   &registration))) {
    throw std::runtime_error("the application server cannot be registered");
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("asp_host PAGES REQUESTS ANSWERS\n", stderr);
    return 2;
  }
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  bool all_served = true;
  try {
    static Site site(com::to_utf16(arguments[1]), arguments[3]);
    register_app_server(site);
    std::ifstream requests(arguments[2]);
    if (!requests) throw std::runtime_error("no requests");
    for (std::string line; std::getline(requests, line);) {
      if (!line.empty()) all_served = site.obey(line) && all_served;
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    all_served = false;
  }
  std::fflush(nullptr);
  // The platform's own end would call objects of this program that are gone by then.
  ExitProcess(all_served ? 0 : 1);
}
