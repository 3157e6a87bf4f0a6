#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "com/error_info.h"
#include "tests/com/windows/page.h"
#include "tests/com/windows/platform_values.h"

// Calls by name in forms that the platform's own scripts do not use.
namespace pradelis::test {
namespace {

using com::Reference;

/// How a call by name ended.
struct Outcome {
  HRESULT code = S_OK;
  HRESULT raised = S_OK;
  Value result;
};

class CallsByName : public testing::Test {
 protected:
  DISPID id_of(const wchar_t* name) {
    auto writable = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    crm->GetIDsOfNames(IID_NULL, &writable, 1, 0, &id);
    return id;
  }

  void call(Outcome& outcome, const wchar_t* name, WORD flags, std::vector<VARIANT> reversed,
            std::vector<DISPID> named = {}) {
    DISPPARAMS parameters{reversed.data(), named.data(), static_cast<UINT>(reversed.size()),
                          static_cast<UINT>(named.size())};
    EXCEPINFO exception{};
    outcome.code =
        crm->Invoke(id_of(name), IID_NULL, 0, flags, &parameters, &outcome.result, &exception, nullptr);
    if (outcome.code == DISP_E_EXCEPTION) outcome.raised = exception.scode;
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
  }

  Reference<_CRM> crm = create_crm();
};

TEST_F(CallsByName, FindNamesWhateverTheirCaseAndParametersByName) {
  wchar_t method[] = L"EXECUTAR";
  wchar_t limit[] = L"maxrecords";
  wchar_t unknown[] = L"nada";
  LPOLESTR names[] = {method, limit, unknown};
  DISPID ids[3] = {};
  EXPECT_EQ(crm->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
  EXPECT_EQ(ids[1], 4);
  EXPECT_EQ(crm->GetIDsOfNames(IID_NULL, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[2], DISPID_UNKNOWN);
  LPOLESTR nothing[] = {unknown};
  EXPECT_EQ(crm->GetIDsOfNames(IID_NULL, nothing, 1, 0, ids), DISP_E_UNKNOWNNAME);
}

TEST_F(CallsByName, TakeArgumentsByName) {
  Value statement("select 1");
  Outcome refused;
  call(refused, L"Executar", DISPATCH_METHOD, {Value(5L), statement.reference()}, {4, 0});
  EXPECT_EQ(refused.raised, E_FAIL);  // all arguments found their places: only the database is missing

  Outcome twice;
  call(twice, L"Executar", DISPATCH_METHOD, {Value(5L), statement}, {0});
  EXPECT_EQ(twice.raised, com::code_of(450));
  Outcome unknown;
  call(unknown, L"FormataOid", DISPATCH_METHOD, {Value(5L)}, {7});
  EXPECT_EQ(unknown.raised, com::code_of(448));
}

TEST_F(CallsByName, GiveOmittedArgumentsTheirDefaults) {
  constexpr std::size_t day_and_time = 19;
  constexpr std::size_t day_alone = 10;
  Outcome left_off;
  call(left_off, L"DataAgora", DISPATCH_METHOD, {});
  EXPECT_EQ(left_off.result.text().size(), day_and_time);

  Value missing;
  missing.vt = VT_ERROR;
  missing.scode = DISP_E_PARAMNOTFOUND;
  for (const VARIANT& given : {static_cast<VARIANT>(missing), missing.reference()}) {
    Outcome outcome;
    call(outcome, L"DataAgora", DISPATCH_METHOD, {given});
    EXPECT_EQ(outcome.result.text().size(), day_and_time);
    EXPECT_EQ(missing.vt, VT_ERROR) << "there is nothing to write back";
  }
  VARIANT_BOOL no = VARIANT_FALSE;
  VARIANT typed;
  typed.vt = VT_BYREF | VT_BOOL;
  typed.pboolVal = &no;
  Outcome given;
  call(given, L"DataAgora", DISPATCH_METHOD, {typed});
  EXPECT_EQ(given.result.text().size(), day_alone);
}

TEST_F(CallsByName, WriteBackIntoVariablesOfEveryType) {
  Value untyped("1.234,56");
  Outcome first;
  call(first, L"FormataNumero", DISPATCH_METHOD, {untyped.reference()});
  EXPECT_EQ(untyped.text(), "1234,56");

  Text text("12.5");
  VARIANT text_reference;
  text_reference.vt = VT_BYREF | VT_BSTR;
  text_reference.pbstrVal = &text;
  Outcome second;
  call(second, L"FormataNumero", DISPATCH_METHOD, {text_reference});
  EXPECT_EQ(text.utf8(), "12,5");

  double number = 2.5;
  VARIANT number_reference;
  number_reference.vt = VT_BYREF | VT_R8;
  number_reference.pdblVal = &number;
  Outcome third;
  call(third, L"FormataNumero", DISPATCH_METHOD, {number_reference});
  EXPECT_EQ(third.result.dblVal, 2.5);
  EXPECT_EQ(number, 2.5);  // the text "2,5", as the number that the variable takes

  CY currency{.int64 = 15000};
  VARIANT currency_reference;
  currency_reference.vt = VT_BYREF | VT_CY;
  currency_reference.pcyVal = &currency;
  Outcome fourth;
  call(fourth, L"FormataNumero", DISPATCH_METHOD, {currency_reference});
  EXPECT_EQ(fourth.result.dblVal, 1.5);
  EXPECT_EQ(currency.int64, 15000);
}

TEST_F(CallsByName, ChangePropertiesByValueAndByReference) {
  Outcome put;
  call(put, L"sValor", DISPATCH_PROPERTYPUT, {Value("abc")}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(put.code, S_OK);
  Outcome read;
  call(read, L"svalor", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
  EXPECT_EQ(read.result.text(), "abc");

  VARIANT nothing;
  VariantInit(&nothing);
  nothing.vt = VT_DISPATCH;
  nothing.pdispVal = nullptr;
  Outcome set;
  call(set, L"rs", DISPATCH_PROPERTYPUTREF, {nothing}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(set.code, S_OK);
  Outcome wrong;
  call(wrong, L"QLCConn", DISPATCH_PROPERTYPUTREF, {nothing}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(wrong.raised, com::code_of(438));
}

TEST_F(CallsByName, RefuseWhatDoesNotFit) {
  Outcome too_few;
  call(too_few, L"FormataOid", DISPATCH_METHOD, {});
  EXPECT_EQ(too_few.raised, com::code_of(449));
  Outcome too_many;
  call(too_many, L"FormataOid", DISPATCH_METHOD, {Value(1L), Value(2L)});
  EXPECT_EQ(too_many.raised, com::code_of(450));
  Outcome failed_argument;
  VARIANT code;
  code.vt = VT_ERROR;
  code.scode = DISP_E_TYPEMISMATCH;
  call(failed_argument, L"FormataOid", DISPATCH_METHOD, {code});
  EXPECT_EQ(failed_argument.raised, com::code_of(13));
  EXPECT_EQ(crm->Invoke(4711, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
            E_INVALIDARG);
  DISPPARAMS none{};
  EXPECT_EQ(crm->Invoke(4711, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(crm->Invoke(id_of(L"FormataOid"), IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

}  // namespace
}  // namespace pradelis::test
