#include "com/registration.h"

#include <string>

#include "com/error_info.h"
#include "com/identifiers.h"
#include "com/registry_key.h"
#include "com/text.h"
#include "com/type_library.h"

namespace pradelis::com {
namespace {

#ifdef _WIN64
constexpr wchar_t platform_name[] = L"win64";
#else
constexpr wchar_t platform_name[] = L"win32";
#endif

/// The platform's own marshaller, which works by the type library.
constexpr wchar_t automation_marshaller[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t library_version[] = L"1.0";
static_assert(library_major_version == 1 && library_minor_version == 0);

std::wstring braced(std::string_view id) { return L"{" + to_utf16(id) + L"}"; }
std::wstring class_key(const ClassIdentifiers& one) { return L"CLSID\\" + braced(one.class_id); }
std::wstring interface_key(const ClassIdentifiers& one) { return L"Interface\\" + braced(one.interface_id); }
std::wstring library_key() { return L"TypeLib\\" + braced(library_id); }
std::wstring version_key() { return library_key() + L"\\" + library_version; }
std::wstring language_key() { return version_key() + L"\\0"; }

void write_class(const RegistryKey& classes, const ClassIdentifiers& one, const std::wstring& path) {
  const std::wstring key = class_key(one);
  const std::wstring program = to_utf16(one.program_identifier);
  const std::wstring description = to_utf16(one.description);
  classes.set(program, L"", description);
  classes.set(program + L"\\CLSID", L"", braced(one.class_id));
  classes.set(key, L"", description);
  classes.set(key + L"\\InprocServer32", L"", path);
  classes.set(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  classes.set(key + L"\\ProgID", L"", program);
  classes.set(key + L"\\TypeLib", L"", braced(library_id));
  classes.set(key + L"\\Version", L"", library_version);
}

void write_interface(const RegistryKey& classes, const ClassIdentifiers& one) {
  const std::wstring key = interface_key(one);
  classes.set(key, L"", L"_" + to_utf16(one.class_name));
  classes.set(key + L"\\ProxyStubClsid32", L"", automation_marshaller);
  classes.set(key + L"\\TypeLib", L"", braced(library_id));
  classes.set(key + L"\\TypeLib", L"Version", library_version);
}

void write_type_library(const RegistryKey& classes, const std::wstring& path) {
  classes.set(version_key(), L"", to_utf16(library_description));
  classes.set(version_key() + L"\\FLAGS", L"", L"0");
  classes.set(version_key() + L"\\HELPDIR", L"", path.substr(0, path.find_last_of(L'\\')));
  classes.set(language_key() + L"\\" + platform_name, L"", path);
}

/// The type library's entry is shared by libraries of either width: it goes with the last of them.
void remove_type_library(const RegistryKey& classes) {
  classes.remove_tree(language_key() + L"\\" + platform_name);
  classes.remove_if_empty(language_key());
  if (!classes.has(language_key())) classes.remove_tree(version_key());
  classes.remove_if_empty(library_key());
}

void remove_all(const RegistryKey& classes) {
  for (const ClassIdentifiers& one : class_identifiers) {
    classes.remove_tree(to_utf16(one.program_identifier));
    classes.remove_tree(class_key(one));
    classes.remove_tree(interface_key(one));
  }
  remove_type_library(classes);
  // A user who never registered anything else had none of these.
  for (const wchar_t* common : {L"CLSID", L"Interface", L"TypeLib"}) classes.remove_if_empty(common);
}

HRESULT register_in(HKEY hive) noexcept {
  return guarded([&] {
    const RegistryKey classes(hive, KEY_READ | KEY_WRITE);
    try {
      const std::wstring path = library_path();
      for (const ClassIdentifiers& one : class_identifiers) {
        write_class(classes, one, path);
        write_interface(classes, one);
      }
      write_type_library(classes, path);
    } catch (...) {
      guarded([&] {
        remove_all(classes);
        return S_OK;
      });
      throw;
    }
    return S_OK;
  });
}

HRESULT unregister_in(HKEY hive) noexcept {
  return guarded([&] {
    const RegistryKey readable(hive, KEY_READ);
    bool is_there = readable.has(version_key());
    for (const ClassIdentifiers& one : class_identifiers) is_there = is_there || readable.has(class_key(one));
    if (is_there) remove_all(RegistryKey(hive, KEY_READ | KEY_WRITE));
    return S_OK;
  });
}

}  // namespace

HRESULT register_library() noexcept {
  const HRESULT code = register_in(HKEY_LOCAL_MACHINE);
  return code == HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED) ? register_in(HKEY_CURRENT_USER) : code;
}

HRESULT unregister_library() noexcept {
  const HRESULT machine = unregister_in(HKEY_LOCAL_MACHINE);
  const HRESULT user = unregister_in(HKEY_CURRENT_USER);
  return FAILED(machine) ? machine : user;
}

}  // namespace pradelis::com
