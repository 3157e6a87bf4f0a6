#include <gtest/gtest.h>

#include <cstdio>

#include "tests/com/windows/page.h"

namespace pradelis::test {

PageObjects& page() {
  static auto* const objects = new PageObjects;  // outlives what holds it
  return *objects;
}

}  // namespace pradelis::test

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) ||
      FAILED(pradelis::test::register_app_server(pradelis::test::page()))) {
    return 2;
  }
  auto& application = *pradelis::test::page().application.get();
  application.set_text(L"dataconn_ConnectionTimeout", L"15");
  application.set_text(L"dataconn_CommandTimeout", L"30");
  application.set_text(L"dataconn_ConnectionString", L"");
  const int outcome = RUN_ALL_TESTS();
  std::fflush(nullptr);
  // The platform's own end would call objects of this program that are gone by then.
  ExitProcess(static_cast<UINT>(outcome));
}
