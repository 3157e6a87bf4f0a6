#include "site/log.h"

#include <algorithm>
#include <cstdio>

#include "values/clock.h"
#include "values/convert.h"

namespace pradelis::site {

void log_line(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  std::fprintf(stderr, "%s  %s\n", to_text(now()).c_str(), text.c_str());
}

}  // namespace pradelis::site
