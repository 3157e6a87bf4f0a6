#include <gtest/gtest.h>

#include <set>
#include <string>

#include "com/guid.h"
#include "com/identifiers.h"
#include "com/text.h"
#include "tests/com/windows/library.h"

// Needs the platform's types.
#include <sddl.h>

// What the library writes into the registry, seen through hives of the test's own: the registration that the
// other tests use stays as it is.
namespace pradelis::test {
namespace {

constexpr wchar_t test_hives[] = L"Software\\PradelisTeste";

/// A key that stands for one of the platform's hives in this process while it lives.
class StandIn {
 public:
  StandIn(HKEY hive, const wchar_t* name) : hive_(hive) {
    const std::wstring path = std::wstring(test_hives) + L"\\" + name;
    HKEY made = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, (path + L"\\Software\\Classes").c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                    nullptr, &made, nullptr);
    RegCloseKey(made);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_ALL_ACCESS, &key_), ERROR_SUCCESS);
  }
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;
  ~StandIn() {
    RegOverridePredefKey(hive_, nullptr);
    RegCloseKey(key_);
  }

  void begin() { EXPECT_EQ(RegOverridePredefKey(hive_, key_), ERROR_SUCCESS); }

  /// From now on nobody may write to the classes.
  void forbid_writing() {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    HKEY classes = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;KRSD;;;WD)", SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
    ASSERT_EQ(RegOpenKeyExW(key_, L"Software\\Classes", 0, WRITE_DAC, &classes), ERROR_SUCCESS);
    EXPECT_EQ(RegSetKeySecurity(classes, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    RegCloseKey(classes);
    LocalFree(descriptor);
  }

  /// All keys and values below, as "key", "key:name=text".
  std::set<std::wstring> content() const {
    std::set<std::wstring> found;
    collect(key_, L"", found);
    return found;
  }

 private:
  static void collect(HKEY key, const std::wstring& path, std::set<std::wstring>& found) {
    wchar_t name[256];
    wchar_t text[1024];
    for (DWORD i = 0;; ++i) {
      DWORD length = static_cast<DWORD>(std::size(name));
      DWORD bytes = sizeof text;
      if (RegEnumValueW(key, i, name, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &bytes) !=
          ERROR_SUCCESS) {
        break;
      }
      found.insert(path + L":" + name + L"=" + text);
    }
    for (DWORD i = 0;; ++i) {
      DWORD length = static_cast<DWORD>(std::size(name));
      if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) return;
      const std::wstring child_path = path + L"\\" + name;
      found.insert(child_path);
      HKEY child = nullptr;
      if (RegOpenKeyExW(key, name, 0, KEY_READ, &child) != ERROR_SUCCESS) continue;
      collect(child, child_path, found);
      RegCloseKey(child);
    }
  }

  HKEY hive_;
  HKEY key_ = nullptr;
};

class Registration : public testing::Test {
 protected:
  ~Registration() override { RegDeleteTreeW(HKEY_CURRENT_USER, test_hives); }

  static bool has_classes(const StandIn& hive) {
    const std::set<std::wstring> content = hive.content();
    for (const com::ClassIdentifiers& one : com::class_identifiers) {
      const std::wstring key =
          L"\\Software\\Classes\\CLSID\\{" + com::to_utf16(one.class_id) + L"}\\InprocServer32";
      if (!content.contains(key + L":ThreadingModel=Apartment")) return false;
      if (!content.contains(L"\\Software\\Classes\\" + com::to_utf16(one.program_identifier) + L"\\CLSID"))
        return false;
    }
    return content.contains(L"\\Software\\Classes\\TypeLib\\{" + com::to_utf16(com::library_id) +
                            L"}\\1.0\\0\\" + (sizeof(void*) == 8 ? L"win64" : L"win32"));
  }

  Library library_;
};

TEST_F(Registration, IsForTheMachineAndGoesWithoutATrace) {
  StandIn machine(HKEY_LOCAL_MACHINE, L"machine");
  StandIn user(HKEY_CURRENT_USER, L"user");
  const std::set<std::wstring> empty = user.content();
  machine.begin();
  user.begin();
  for (int again = 0; again < 2; ++again) EXPECT_EQ(library_.call("DllRegisterServer"), S_OK);
  EXPECT_TRUE(has_classes(machine));
  EXPECT_EQ(user.content(), empty);
  for (int again = 0; again < 2; ++again) EXPECT_EQ(library_.call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(machine.content(), empty);
  EXPECT_EQ(user.content(), empty);
}

TEST_F(Registration, IsForTheUserWithoutTheMachinesRights) {
  StandIn machine(HKEY_LOCAL_MACHINE, L"machine");
  machine.forbid_writing();
  StandIn user(HKEY_CURRENT_USER, L"user");
  const std::set<std::wstring> empty = user.content();
  machine.begin();
  user.begin();
  EXPECT_EQ(library_.call("DllRegisterServer"), S_OK);
  EXPECT_TRUE(has_classes(user));
  EXPECT_EQ(machine.content(), empty);
  EXPECT_EQ(library_.call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(user.content(), empty);
}

TEST_F(Registration, LeavesWhatIsNotItsOwn) {
  StandIn machine(HKEY_LOCAL_MACHINE, L"machine");
  machine.begin();
  HKEY other = nullptr;
  const std::wstring types =
      L"Software\\Classes\\TypeLib\\{" + com::to_utf16(com::library_id) + L"}\\1.0\\0\\other";
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, types.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &other, nullptr);
  RegCloseKey(other);
  ASSERT_EQ(library_.call("DllRegisterServer"), S_OK);
  ASSERT_EQ(library_.call("DllUnregisterServer"), S_OK);
  EXPECT_TRUE(machine.content().contains(L"\\" + types))
      << "the library of the other width has its entry there";
}

}  // namespace
}  // namespace pradelis::test
