#include "com/error_info.h"

#include <array>
#include <new>
#include <string>

#include "com/reference.h"
#include "com/text.h"

namespace pradelis::com {
namespace {

constexpr std::int32_t largest_script_number = 0xFFFF;

struct KnownCode {
  HRESULT code;
  std::int32_t number;
};

/// Codes that scripts read as one of their own numbers.
constexpr std::array<KnownCode, 12> known_codes{{
    {DISP_E_TYPEMISMATCH, error_number::type_mismatch},
    {DISP_E_OVERFLOW, error_number::overflow},
    {DISP_E_BADINDEX, error_number::subscript_out_of_range},
    {DISP_E_ARRAYISLOCKED, 10},
    {DISP_E_DIVBYZERO, 11},
    {DISP_E_MEMBERNOTFOUND, error_number::no_such_member},
    {DISP_E_UNKNOWNNAME, error_number::no_such_member},
    {DISP_E_NONAMEDARGS, 446},
    {DISP_E_PARAMNOTOPTIONAL, error_number::argument_not_optional},
    {DISP_E_BADPARAMCOUNT, error_number::wrong_number_of_arguments},
    {E_OUTOFMEMORY, error_number::out_of_memory},
    {E_INVALIDARG, error_number::invalid_argument},
}};

std::string take(BSTR& text) {
  std::string result = from_bstr(text);
  SysFreeString(text);
  text = nullptr;
  return result;
}

}  // namespace

HRESULT code_of(std::int32_t number) noexcept {
  if (number < 0) return number;
  if (number == 0 || number > largest_script_number) return E_FAIL;
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<unsigned>(number));
}

std::int32_t number_of(HRESULT code) noexcept {
  if (HRESULT_FACILITY(code) == FACILITY_CONTROL) return HRESULT_CODE(code);
  for (const KnownCode& known : known_codes) {
    if (known.code == code) return known.number;
  }
  return code;
}

Error current_error() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {error_number::out_of_memory, "", std::string(platform_text(error_number::out_of_memory))};
  } catch (const std::exception& exception) {
    return {E_FAIL, "", exception.what()};
  } catch (...) {
    return {E_FAIL, "", ""};
  }
}

HRESULT leave_error_info(const Error& error, REFIID interface_id) noexcept {
  const HRESULT code = code_of(error.number());
  Reference<ICreateErrorInfo> creator;
  if (FAILED(CreateErrorInfo(creator.receiver()))) return code;
  try {
    std::wstring source = to_utf16(error.source());
    std::wstring description = to_utf16(error.description());
    creator->SetGUID(interface_id);
    creator->SetSource(source.data());
    creator->SetDescription(description.data());
  } catch (...) {
    return code;  // without the texts rather than not at all
  }
  Reference<IErrorInfo> info;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, info.untyped_receiver())))
    SetErrorInfo(0, info.get());
  return code;
}

HRESULT fill_exception(const Error& error, EXCEPINFO* info) noexcept {
  if (!info) return DISP_E_EXCEPTION;
  *info = {};
  info->scode = code_of(error.number());
  try {
    info->bstrSource = new_bstr(error.source());
    info->bstrDescription = new_bstr(error.description());
  } catch (...) {
    // The number alone still says what happened.
  }
  return DISP_E_EXCEPTION;
}

Error error_of(HRESULT code, EXCEPINFO& info) {
  if (code != DISP_E_EXCEPTION) {
    const std::int32_t number = number_of(code);
    return {number, "", std::string(platform_text(number))};
  }
  if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
  const std::int32_t number = info.wCode != 0 ? info.wCode : number_of(info.scode);
  SysFreeString(info.bstrHelpFile);
  std::string source = take(info.bstrSource);
  std::string description = take(info.bstrDescription);
  if (description.empty()) description = platform_text(number);
  return {number, std::move(source), std::move(description)};
}

}  // namespace pradelis::com
