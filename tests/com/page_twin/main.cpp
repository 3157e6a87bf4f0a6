#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "tests/com/page_twin/twin_page.h"
#include "tests/com/support/page_text.h"
#include "values/error.h"

// page_twin PAGES REQUESTS ANSWERS: what the sample pages have to answer, found by calls of the component
// without any script. Arguments and answers are those of asp_host.

namespace {

using namespace pradelis;

std::vector<std::string> texts_of(const std::string& page) {
  std::vector<std::string> texts;
  for (const test::PagePart& part : test::parts_of(page)) {
    if (!part.is_script) texts.push_back(part.text);
  }
  return texts;
}

/// The pieces of one page, without those of the included file between its first two.
std::vector<std::string> own_texts(const std::string& folder, const std::string& name, std::size_t common) {
  std::vector<std::string> texts = texts_of(test::read_page(folder, name));
  texts.erase(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(common));
  return texts;
}

void answer_all(const std::string& folder, std::istream& requests, const std::string& answers) {
  // The file ends with a line end behind its last tag, which is part of the page's next piece.
  const std::string included = test::read_page(folder, "crm.inc");
  const std::vector<std::string> common = texts_of("\n" + included.substr(0, included.size() - 1));
  tests::WebHost host("");
  test::Visitor visitor{host, {}};
  int served = 0;
  for (const test::PageRequest& request : test::read_requests(requests)) {
    if (request.verb == "APPLICATION") {
      host.set_application(request.name, request.value);
      continue;
    }
    test::TwinPage page(common, own_texts(folder, request.name, common.size()), request, host);
    page.common_text(0);
    test::serve(page, visitor);
    std::ofstream(answers + "/" + std::to_string(++served) + ".html", std::ios::binary) << page.answer();
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("page_twin PAGES REQUESTS ANSWERS\n", stderr);
    return 2;
  }
  try {
    std::ifstream requests(arguments[2]);
    if (!requests) throw std::runtime_error("no requests");
    answer_all(arguments[1], requests, arguments[3]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
